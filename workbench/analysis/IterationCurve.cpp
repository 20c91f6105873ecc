#include "workbench/analysis/IterationCurve.h"

#include <cmath>
#include <cstddef>
#include <limits>
#include <numbers>
#include <utility>

// |q|^2 = 1 + a (a - 2 cos w) with a = c |H|^2; where it is near 1, its logarithm keeps its digits.
IterationCurve::IterationCurve(PowerSpectra powerSpectra, double convergence)
    : powers(std::move(powerSpectra)) {
    for (std::size_t j = 0; j < powers.kernel.size(); ++j) {
        const double a = convergence * powers.kernel[j];
        const double w = 2.0 * std::numbers::pi * static_cast<double>(j) / powers.length;
        logs.push_back(std::log1p(a * (a - 2.0 * std::cos(w))));
        angles.push_back(std::atan2(a * std::sin(w), 1.0 - a * std::cos(w)));
    }
}

// exp(-infinity) is the power of a q that is 0; to the power of 0 it is 1 as any other.
static double power(double logarithm, std::int64_t exponent) {
    return exponent == 0 ? 1.0 : std::exp(static_cast<double>(exponent) * logarithm);
}

// An empty bin adds nothing to the error, however far it diverges.
IterationCurve::Point IterationCurve::at(std::int64_t steps) const {
    Point point{.steps = steps};
    for (std::size_t j = 0; j < logs.size(); ++j) {
        const int times = powers.multiplicity(j);
        const double magnitude = power(0.5 * logs[j], steps);
        const double square = magnitude * magnitude;
        const double real = magnitude * std::cos(static_cast<double>(steps) * angles[j]);
        if (powers.signal[j] != 0.0) {
            point.error += times * powers.signal[j] * square;
        }
        point.kept += times * (1.0 - real);
        point.squares += times * (1.0 - 2.0 * real + square);
    }
    point.error /= powers.length;
    return point;
}

// E_k - E_(k-1), term by term.
bool IterationCurve::falls(std::int64_t step) const {
    double change = 0.0;
    for (std::size_t j = 0; j < logs.size(); ++j) {
        if (powers.signal[j] != 0.0) {
            change += powers.multiplicity(j) * powers.signal[j] * power(logs[j], step - 1) *
                      std::expm1(logs[j]);
        }
    }
    return change <= 0.0;  // not where it is not a number: the powers have left the range
}

std::int64_t IterationCurve::lastFalling(std::int64_t most) const {
    std::int64_t falling = 0, rising = most + 1;
    while (rising - falling > 1) {
        const std::int64_t middle = falling + (rising - falling) / 2;
        (falls(middle) ? falling : rising) = middle;
    }
    return falling;
}

double IterationCurve::robustGcv(const Point& point) const {
    constexpr double g = 0.2;
    const double left = 1.0 - point.kept / powers.length;
    return point.error / (left * left) * (g + (1.0 - g) * point.squares / powers.length);
}

bool IterationCurve::predicts(double reported, std::int64_t steps) const {
    const double predicted = at(steps).error;
    const double rounding = powers.length * std::numeric_limits<double>::epsilon() *
                            std::sqrt(powers.energy());  // root of its energy
    const double allowed = 1e-6 * predicted + rounding * (2.0 * std::sqrt(predicted) + rounding);
    return std::abs(reported - predicted) <= allowed;
}
