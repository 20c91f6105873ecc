#include "workbench/analysis/AnswerChoice.h"

#include "workbench/analysis/CurveSearch.h"
#include "workbench/analysis/NoiseEstimate.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

// Periodogram of the residual in the bins that the method leaves to the noise; over that of the
// noise, where it is known.
static std::vector<double> restOf(const AnswerCurve& curve, double parameter,
                                  const std::optional<NoiseModel>& noise) {
    constexpr double negligible = 0.1;
    std::vector<double> rest;
    for (std::size_t j = 0; j < curve.spectra().signal.size(); ++j) {
        const std::complex<double> left = curve.left(j, parameter);
        if (std::abs(1.0 - left) < negligible) {
            const double expected = noise ? noise->power()[j] : 1.0;
            rest.push_back(curve.spectra().signal[j] * std::norm(left) / expected);
        }
    }
    return rest;
}

static std::optional<double> whitenessOf(std::vector<double> rest) {
    constexpr std::size_t fewest = 20;
    std::partial_sum(rest.begin(), rest.end(), rest.begin());
    if (rest.size() < fewest || !(rest.back() > 0.0) || !std::isfinite(rest.back())) {
        return std::nullopt;
    }
    const auto count = static_cast<double>(rest.size());
    double distance = 0.0;
    for (std::size_t i = 0; i < rest.size(); ++i) {
        const double line = static_cast<double>(i + 1) / count;
        distance = std::max(distance, std::abs(rest[i] / rest.back() - line));
    }
    return distance * std::sqrt(count);
}

static AnswerChoice judge(const AnswerCurve& curve, const CurvePoint& point,
                          const std::optional<NoiseModel>& noise, bool estimates = true) {
    const PowerSpectra& spectra = curve.spectra();
    AnswerChoice choice{.parameter = point.parameter,
                        .explained = 1.0 - point.error / spectra.energy(),
                        .kept = point.kept,
                        .degrees = static_cast<double>(spectra.degrees()),
                        .noiseGiven = noise.has_value(),
                        .predictedError = point.error,
                        .whiteness = whitenessOf(restOf(curve, point.parameter, noise)),
                        .curve = {point}};
    const NoiseEstimate estimate = noise       ? NoiseEstimate{.sigma = noise->sigma()}
                                   : estimates ? estimateNoise(spectra)
                                               : NoiseEstimate{};
    choice.noise = estimate.sigma;
    choice.noiseIsBound = estimate.isBound;
    return choice;
}

static AnswerChoice judge(const AnswerCurve& curve, CurveSearch search, double first, double last,
                          const std::optional<NoiseModel>& noise) {
    AnswerChoice choice = judge(curve, search.best, noise);
    choice.first = first;
    choice.last = last;
    choice.curve = std::move(search.points);
    return choice;
}

AnswerChoice chooseSteps(const IterationCurve& curve, const std::optional<NoiseModel>& noise) {
    const std::int64_t last = curve.lastFalling(AnswerChoice::mostSteps);
    if (last == 0) {
        return judgeSteps(curve, 0, noise);
    }
    return judge(curve, searchSteps(curve, noise, last), 1.0, static_cast<double>(last), noise);
}

AnswerChoice judgeSteps(const IterationCurve& curve, std::int64_t steps,
                        const std::optional<NoiseModel>& noise) {
    return judge(curve, curve.at(static_cast<double>(steps), noise), noise);
}

AnswerChoice chooseStrength(const RegularizedCurve& curve, const std::optional<NoiseModel>& noise) {
    return judge(curve, searchStrength(curve, noise), weakestStrength, greatestStrength, noise);
}

AnswerChoice judgeStrength(const RegularizedCurve& curve, double strength,
                           const std::optional<NoiseModel>& noise, bool estimates) {
    return judge(curve, curve.at(strength, noise), noise, estimates);
}
