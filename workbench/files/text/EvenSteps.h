#pragma once

#include "workbench/files/text/ColumnDigits.h"

#include <array>
#include <cstdint>

// Fits an even axis to points that come one after the other, rising or falling, in constant memory.
// It keeps the steps that fit every point so far, in two ways:
//   by digits  each point, the first one too, is rounded to the digits of its column and off by at
//              most half a unit of them, and by the rounding of doubles. The place of the first
//              point is tried at 17 places within its unit, each widened by a sixteenth. Steps
//              below two units take five points to be believed: 0, 1, 3 may be 1.5 apart.
//   loosely    point i is within 5 % of a step of first + i step: clocks are not quite even, and
//              single precision leaves digits that mean nothing.
class EvenSteps {
public:
    explicit EvenSteps(const ColumnDigits& columnDigits) : digits(columnDigits) {}

    // False if no step fits this point and all before it in either way; then the axis is of no use.
    bool accept(double point);

    // Whether the points so far are even; those that were accepted may still be too few.
    [[nodiscard]] bool even() const;
    // Whether they are, loosely.
    [[nodiscard]] bool looselyEven() const { return loosely; }

    [[nodiscard]] double first() const { return start; }

    // Of two points or more, the smallest and the largest magnitude of a step that fits. Where the
    // points are even just as they are written, the first one is taken to be exact, and all of them
    // if they are whole numbers: those count something.
    struct Range {
        double lowest = 0.0, highest = 0.0;
    };
    [[nodiscard]] Range range() const;

    // The mean step within that range; below 0 if the points fall.
    [[nodiscard]] double step() const;

    // Whether the points are even just as they are written, so that the step is not rounded.
    [[nodiscard]] bool exact() const { return plain; }

private:
    static constexpr int places = 17;  // of the first point

    [[nodiscard]] double rounding(double point) const;
    double unitAt(double point);
    bool acceptByDigits(double point, double rise);
    bool acceptLoosely(double rise);

    ColumnDigits digits;
    double start = 0.0, last = 0.0, direction = 1.0, firstRise = 0.0;
    std::int64_t count = 0;
    bool plain = true, byDigits = true, loosely = true;
    double startUnit = 0.0;
    double unit = 0.0;       // at magnitudes within a decade, of which most points are
    Range decade{1.0, 0.0};  // these, within their ends, which rounding leaves in doubt
    std::array<Range, places> fits = {};  // by digits; empty where lowest > highest
    Range loose;
};
