#include "workbench/analysis/Band.h"

#include "workbench/analysis/Spectrum.h"

#include <algorithm>
#include <cmath>
#include <numeric>

static constexpr double deviations = 1.96;  // on either side, of 95 % of a normal distribution

double bandHalfWidth(const std::vector<double>& answer, double sigma) {
    const double squares = std::inner_product(answer.begin(), answer.end(), answer.begin(), 0.0);
    return deviations * sigma * std::sqrt(squares);
}

double bandOfNoise(const std::vector<double>& answer, const std::vector<double>& power) {
    const std::size_t length = answer.size();
    const Spectrum spectrum = spectrumOf(answer, length);
    double sum = 0.0;
    for (std::size_t j = 0; j < length; ++j) {
        const double square = spectrum.re[j] * spectrum.re[j] + spectrum.im[j] * spectrum.im[j];
        sum += power[std::min(j, length - j)] * square;
    }
    return deviations * std::sqrt(sum / static_cast<double>(length));
}

// Rounding in the spectra may leave sums a little below 0.
std::vector<double> bandOfVariances(const std::vector<double>& answer, std::size_t impulseIndex,
                                    const std::vector<double>& variances) {
    std::vector<double> squares(answer), given(variances);
    std::rotate(squares.begin(), squares.begin() + static_cast<std::ptrdiff_t>(impulseIndex),
                squares.end());
    std::transform(squares.begin(), squares.end(), squares.begin(), [](double f) { return f * f; });
    std::transform(given.begin(), given.end(), given.begin(),
                   [](double variance) { return std::max(variance, 0.0); });
    std::vector<double> band = periodicConvolution(squares, given);
    std::transform(band.begin(), band.end(), band.begin(),
                   [](double variance) { return deviations * std::sqrt(std::max(variance, 0.0)); });
    return band;
}

// From the first sample, which is the largest, to where the line falls to half of it.
template <typename Iterator>
static double halfWidth(Iterator begin, Iterator end) {
    const double half = 0.5 * *begin;
    const Iterator below = std::find_if(begin, end, [half](double value) { return value < half; });
    if (below == end) {
        return 0.5 * static_cast<double>(end - begin);
    }
    const double above = *(below - 1);
    return static_cast<double>(below - begin) - (half - *below) / (above - *below);
}

double resolutionOf(const std::vector<double>& answer, const std::vector<double>& kernel) {
    std::vector<double> line = periodicConvolution(answer, kernel);
    const auto largest = std::max_element(line.begin(), line.end());
    if (largest == line.end() || *largest <= 0.0) {
        return 0.0;
    }
    std::rotate(line.begin(), largest, line.end());
    const double after = halfWidth(line.begin(), line.end());
    std::rotate(line.begin(), line.begin() + 1, line.end());
    return after + halfWidth(line.rbegin(), line.rend());
}
