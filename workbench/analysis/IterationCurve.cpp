#include "workbench/analysis/IterationCurve.h"

#include "kernels/WorkWatch.h"

#include <cmath>
#include <limits>
#include <utility>

// |q|^2 = 1 + a (a - 2 cos w) with a = c |H|^2; where it is near 1, its logarithm keeps its digits.
IterationCurve::IterationCurve(PowerSpectra powerSpectra, double convergence)
    : AnswerCurve(std::move(powerSpectra)) {
    kernels::WorkCount work(kernels::WorkCount::unknown);
    for (std::size_t j = 0; j < spectra().kernel.size(); ++j) {
        work.add(10.0 * kernels::WorkWatch::element);
        const double a = convergence * spectra().kernel[j];
        const double w = spectra().frequency(j);
        logs.push_back(std::log1p(a * (a - 2.0 * std::cos(w))));
        angles.push_back(std::atan2(a * std::sin(w), 1.0 - a * std::cos(w)));
    }
}

// exp(-infinity) is the power of a q that is 0; to the power of 0 it is 1 as any other.
static double power(double logarithm, double exponent) {
    return exponent == 0.0 ? 1.0 : std::exp(exponent * logarithm);
}

std::complex<double> IterationCurve::left(std::size_t j, double steps) const {
    const double magnitude = power(0.5 * logs[j], steps);
    return {magnitude * std::cos(steps * angles[j]), magnitude * std::sin(steps * angles[j])};
}

// E_k - E_(k-1), term by term.
bool IterationCurve::falls(std::int64_t step) const {
    const auto before = static_cast<double>(step - 1);
    double change = 0.0;
    kernels::WorkWatch::passed(4.0 * kernels::WorkWatch::element *
                               static_cast<double>(logs.size()));
    for (std::size_t j = 0; j < logs.size(); ++j) {
        if (spectra().signal[j] != 0.0) {
            change += spectra().multiplicity(j) * spectra().signal[j] * power(logs[j], before) *
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

bool IterationCurve::predicts(double reported, std::int64_t steps) const {
    const double predicted = at(static_cast<double>(steps)).error;
    const double rounding = spectra().length * std::numeric_limits<double>::epsilon() *
                            std::sqrt(spectra().energy());  // root of its energy
    const double allowed = 1e-6 * predicted + rounding * (2.0 * std::sqrt(predicted) + rounding);
    return std::abs(reported - predicted) <= allowed;
}
