#pragma once

#include <optional>
#include <string>
#include <vector>

// A first column that is an axis, as its name in the header says.
struct AxisColumn {
    bool time = false;
    double perSecond = 1.0;  // units of a time column in one second
};

// Takes the first of two or more columns as a time if a word of its name (letters; case ignored) is
// t, time, zeit or temps, its unit being another of its words: ns, us, ms, s, min, h, or else
// seconds; or as another axis if a word is x, axis, index, sample, channel, kanal, n, offset,
// energy or frequency, unless a later column has that word too.
std::optional<AxisColumn> findAxisColumn(const std::vector<std::string>& names);

// Fits an even axis to points that come one after the other, in constant memory: it tracks the
// interval of steps that fits every point so far. Point i has to be within 5 % of a step of
// first + i step, since columns are often rounded to a few digits.
class EvenSteps {
public:
    // False if no step fits this point and all before it; then the axis is as it was.
    bool accept(double point);

    double first() const { return start; }

    // The mean step. At least two points.
    double step() const { return (last - start) / static_cast<double>(count - 1); }

private:
    double start = 0.0, last = 0.0;
    long long count = 0;
    double lowest = 0.0, highest = 0.0;  // of the step; from the second point on
};
