#pragma once

#include <optional>
#include <string>
#include <vector>

// What the header says about the first column of a text file.
struct AxisColumn {
    bool time = false;
    double perSecond = 1.0;  // units of a time column in one second
};

// Takes the first of two or more columns as a time if a word of its name (letters; case ignored) is
// t, time, zeit or temps, its unit being another of its words: ns, us, ms, s, min, h, or else
// seconds; or as another axis if a word is x, axis, index, sample, channel, kanal, n, offset,
// energy or frequency, unless a later column has that word too.
std::optional<AxisColumn> findAxisColumn(const std::vector<std::string>& names);

// Fits an even axis to points that come one after the other, none of which it keeps. Point i is to
// be within 5 % of a step of first + i step, since columns are often rounded to a few digits: what
// all the points leave of the step is an interval.
class EvenSteps {
public:
    // False if no step suits this point and all before it. The axis then is as it was.
    bool accept(double point);

    double first() const { return start; }

    // The mean step. At least two points.
    double step() const { return (last - start) / static_cast<double>(count - 1); }

private:
    double start = 0.0, last = 0.0;
    long long count = 0;
    double lowest = 0.0, highest = 0.0;  // of the step; from the second point on
};
