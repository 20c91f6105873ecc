#pragma once

#include <cstddef>
#include <limits>
#include <vector>

// Samples with the extremes of every stretch of 8, 16, 32, ... of them, so that a picture of any
// stretch costs as much as it has columns, and no sample is hidden in one. Levels below 8 would
// take four times the memory, and save a column a few steps.
class Pyramid {
public:
    // Both NaN: no sample is a number.
    struct Extremes {
        double lowest = std::numeric_limits<double>::quiet_NaN();
        double highest = std::numeric_limits<double>::quiet_NaN();
    };

    explicit Pyramid(std::vector<double> levelZero);

    [[nodiscard]] std::size_t size() const { return samples.size(); }
    [[nodiscard]] double operator[](std::size_t i) const { return samples[i]; }

    // Of samples first to last - 1; NaN is left out, infinities count. Takes some ten to thirty
    // steps, whatever the length.
    [[nodiscard]] Extremes extremes(std::size_t first, std::size_t last) const;

    // The same of all samples that are finite.
    [[nodiscard]] Extremes finiteRange() const { return finite; }

private:
    // Of a stretch without a number, lowest is infinite and highest its negative, so that it joins
    // with others.
    using Level = std::vector<Extremes>;

    std::vector<double> samples;
    std::vector<Level> levels;  // [k][i]: of 2^(k+3) samples, from i 2^(k+3) on
    Extremes finite;
};
