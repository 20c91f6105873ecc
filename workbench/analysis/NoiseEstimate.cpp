#include "workbench/analysis/NoiseEstimate.h"

#include "kernels/WorkWatch.h"
#include "workbench/analysis/CurveSearch.h"
#include "workbench/analysis/RegularizedCurve.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <limits>
#include <numbers>
#include <numeric>
#include <optional>
#include <vector>

static std::vector<double> powersOfEmptyBins(const PowerSpectra& spectra) {
    const double low = 1e-3 * 1e-3 * spectra.largestGain();
    std::vector<double> empty;
    for (std::size_t j = 0; j < spectra.kernel.size(); ++j) {
        if (spectra.kernel[j] < low) {
            empty.insert(empty.end(), static_cast<std::size_t>(spectra.multiplicity(j)),
                         spectra.signal[j]);
        }
    }
    return empty;
}

static std::optional<double> noiseOfEmptyBins(const PowerSpectra& spectra) {
    std::vector<double> empty = powersOfEmptyBins(spectra);
    if (empty.size() < fewestEmptyBins) {
        return std::nullopt;
    }
    kernels::WorkWatch::passed(4.0 * kernels::WorkWatch::element *
                               static_cast<double>(empty.size()));
    const auto middle = empty.begin() + std::ssize(empty) / 2;
    std::nth_element(empty.begin(), middle, empty.end());
    const double mean = *middle / std::numbers::ln2;
    return std::sqrt(mean / spectra.length / spectra.oversampling);
}

// Mean power of the weakest eighth of the spectrum, corrected for being the least of many.
static double weakestPower(const PowerSpectra& spectra) {
    constexpr std::size_t parts = 8, fewest = 16;
    const std::size_t width = std::max(fewest, spectra.signal.size() / parts);
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t first = 0; first + width <= spectra.signal.size(); first += width / 2) {
        const auto begin = spectra.signal.begin() + static_cast<std::ptrdiff_t>(first);
        const double sum = std::accumulate(begin, begin + static_cast<std::ptrdiff_t>(width), 0.0);
        least = std::min(least, sum);
    }
    const auto bins = static_cast<double>(width);
    return least / bins / (1.0 - 1.5 / std::sqrt(bins));
}

NoiseEstimate estimateNoise(const PowerSpectra& spectra) {
    if (const std::optional<double> sigma = noiseOfEmptyBins(spectra)) {
        return {.sigma = *sigma};
    }
    const CurvePoint best = searchStrength(RegularizedCurve(spectra, 2), std::nullopt).best;
    const double residual = best.error / best.leftSquares;
    const double weakest = weakestPower(spectra) / spectra.length;
    return {.sigma = std::sqrt(std::min(residual, weakest) / spectra.oversampling),
            .isBound = true};
}

std::optional<double> noiseOfQuotient(const PowerSpectra& spectra) {
    const std::optional<double> sigma = noiseOfEmptyBins(spectra);
    if (!sigma) {
        return std::nullopt;
    }
    double inverse = 0.0;
    for (std::size_t j = 0; j < spectra.kernel.size(); ++j) {
        inverse += spectra.kernel[j] == 0.0 ? 0.0 : spectra.multiplicity(j) / spectra.kernel[j];
    }
    return *sigma * std::sqrt(inverse / spectra.degrees());
}
