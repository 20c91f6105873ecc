#include "workbench/analysis/StepChoice.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <limits>
#include <numbers>
#include <vector>

// Noise in bins that the kernel leaves empty. White noise of the variance s^2 has there a power
// that is exponentially distributed with the mean N s^2, and so the median N s^2 ln 2, which a few
// bins of signal do not move. Below 0 where there are fewer than 16 such bins.
static double varianceOfEmptyBins(const PowerSpectra& spectra) {
    const double low = 1e-3 * 1e-3 * spectra.largestGain();
    constexpr std::size_t fewest = 16;
    std::vector<double> empty;
    for (std::size_t j = 0; j < spectra.kernel.size(); ++j) {
        if (spectra.kernel[j] < low) {
            empty.insert(empty.end(), static_cast<std::size_t>(spectra.multiplicity(j)),
                         spectra.signal[j]);
        }
    }
    if (empty.size() < fewest) {
        return -1.0;
    }
    const auto middle = empty.begin() + std::ssize(empty) / 2;
    std::nth_element(empty.begin(), middle, empty.end());
    return *middle / (spectra.length * std::numbers::ln2);
}

// sum |q|^(2k) = N - 2 A + B is what white noise of variance 1 leaves in the residual.
static double varianceOfResidual(const IterationCurve& curve, const IterationCurve::Point& point) {
    const double left = curve.spectra().length - 2.0 * point.kept + point.squares;
    return left > 0.0 ? point.error / left : 0.0;
}

StepChoice judgeSteps(const IterationCurve& curve, std::int64_t steps) {
    const IterationCurve::Point point = curve.at(steps);
    StepChoice choice{.steps = steps, .kept = point.kept, .predictedError = point.error};
    choice.explained = 1.0 - point.error / curve.spectra().energy();
    const double variance = varianceOfEmptyBins(curve.spectra());
    choice.noiseIsBound = variance < 0.0;
    choice.noise = std::sqrt(choice.noiseIsBound ? varianceOfResidual(curve, point) : variance);
    return choice;
}

static std::vector<std::int64_t> geometricGrid(std::int64_t last) {
    constexpr int counts = 200;
    std::vector<std::int64_t> grid;
    for (int i = 0; i < counts; ++i) {
        const std::int64_t steps =
            std::llround(std::pow(static_cast<double>(last), i / (counts - 1.0)));
        if (grid.empty() || steps > grid.back()) {
            grid.push_back(steps);
        }
    }
    return grid;
}

// The best count, and ten on either side of it up to its neighbours.
static std::vector<std::int64_t> finerGrid(std::int64_t below, std::int64_t best,
                                           std::int64_t above) {
    constexpr int counts = 10;
    std::vector<std::int64_t> grid(2 * counts + 1);
    for (int i = 0; i <= counts; ++i) {
        grid.begin()[i] = below + (best - below) * i / counts;
        grid.begin()[i + counts] = best + (above - best) * i / counts;
    }
    grid.erase(std::unique(grid.begin(), grid.end()), grid.end());
    return grid;
}

// Where nothing is left to validate by, the criterion is not a number: the last choice of all.
static std::size_t placeOfLowest(const IterationCurve& curve,
                                 const std::vector<std::int64_t>& grid) {
    std::vector<double> criteria;
    std::transform(grid.begin(), grid.end(), std::back_inserter(criteria), [&](std::int64_t steps) {
        const double criterion = curve.robustGcv(curve.at(steps));
        return std::isnan(criterion) ? std::numeric_limits<double>::infinity() : criterion;
    });
    return static_cast<std::size_t>(std::min_element(criteria.begin(), criteria.end()) -
                                    criteria.begin());
}

StepChoice chooseSteps(const IterationCurve& curve) {
    const std::int64_t last = curve.lastFalling(StepChoice::mostSteps);
    if (last == 0) {
        return judgeSteps(curve, 0);
    }
    std::int64_t best = 0;
    std::vector<std::int64_t> grid = geometricGrid(last);
    for (bool coarse = true; coarse;) {
        const std::size_t place = placeOfLowest(curve, grid);
        const std::int64_t below = grid[place == 0 ? 0 : place - 1];
        const std::int64_t above = grid[std::min(place + 1, grid.size() - 1)];
        best = grid[place];
        coarse = best - below > 1 || above - best > 1;
        grid = finerGrid(below, best, above);
    }
    StepChoice choice = judgeSteps(curve, best);
    choice.lastStep = last;
    return choice;
}
