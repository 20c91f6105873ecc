#include "workbench/analysis/Alignment.h"

#include "workbench/analysis/Spectrum.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

// Correlation s: sum_i x[i - s] y[i], the convolution of y with x reversed.
Alignment bestAlignment(const std::vector<double>& x, const std::vector<double>& y) {
    std::vector<double> reversed(x);
    std::reverse(reversed.begin() + 1, reversed.end());
    const std::vector<double> correlation = periodicConvolution(y, reversed);
    const auto length = std::ssize(y);
    const auto best =
        std::max_element(correlation.begin(), correlation.end()) - correlation.begin();
    double differences = 0.0, squares = 0.0;
    for (std::ptrdiff_t i = 0; i < length; ++i) {
        const double value = x.begin()[(i - best + length) % length];
        const double other = y.begin()[i];
        differences += (value - other) * (value - other);
        squares += other * other;
    }
    return {best > length / 2 ? best - length : best, std::sqrt(differences / squares)};
}
