#include "workbench/analysis/AnswerChoice.h"

#include "tests/support/BlurredLines.h"
#include "workbench/analysis/NoiseEstimate.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <numeric>
#include <optional>
#include <string>
#include <utility>
#include <vector>

using Noise = std::optional<NoiseModel>;

// Uniform noise of the height 1 has the variance 1/3.
static double sigmaOf(double height) {
    return height / std::sqrt(3.0);
}

static double lowestOf(const AnswerCurve& curve, const Noise& noise,
                       const std::vector<double>& parameters) {
    CurvePoint best = curve.at(parameters.front(), noise);
    for (const double parameter : parameters) {
        const CurvePoint point = curve.at(parameter, noise);
        best = point.criterion < best.criterion ? point : best;
    }
    return best.parameter;
}

static std::vector<double> everyStrength() {
    std::vector<double> strengths;
    for (int power = -16; power < 6; ++power) {
        for (int digits = 100; digits < 1000; ++digits) {
            strengths.push_back(std::stod(std::to_string(digits) + "e" + std::to_string(power)));
        }
    }
    return strengths;
}

static std::vector<double> everyCount(double last) {
    std::vector<double> counts(static_cast<std::size_t>(last));
    std::iota(counts.begin(), counts.end(), 1.0);
    return counts;
}

// Against every strength that can be chosen.
static bool choosesLowest(const PowerSpectra& spectra, const Noise& noise) {
    const IterationCurve steps(spectra, 1.0);
    const RegularizedCurve strengths(spectra, 2);
    const AnswerChoice count = chooseSteps(steps, noise);
    return count.parameter == lowestOf(steps, noise, everyCount(count.last)) &&
           chooseStrength(strengths, noise).parameter ==
               lowestOf(strengths, noise, everyStrength());
}

// With the outer heights the count lies at an edge.
TEST(AnswerChoice, IsTheMinimumOfTheCriterion) {
    const Signal kernel = peak(256, 4.0);
    for (const double height : {1e-1, 1e-2, 1e-3, 1e-4}) {
        const PowerSpectra spectra(blurredLines(kernel, height, 3), kernel);
        EXPECT_TRUE(choosesLowest(spectra, std::nullopt)) << height;
        EXPECT_TRUE(choosesLowest(spectra, NoiseModel::white(sigmaOf(height), 256))) << height;
        EXPECT_EQ(chooseSteps(IterationCurve(spectra, 1.0), std::nullopt).atEdge(),
                  height != 1e-2 && height != 1e-3);
    }
}

static NoiseEstimate noiseOf(const Signal& kernel, double height) {
    return estimateNoise(PowerSpectra(blurredLines(kernel, height, 4), kernel));
}

// A broad peak leaves 5 of 6 bins empty; a decay leaves none, and what is there of noise and
// signal is a bound.
TEST(AnswerChoice, EstimatesTheNoise) {
    for (const double height : {1e-1, 1e-2, 1e-4}) {
        const NoiseEstimate empty = noiseOf(peak(1024, 4.0), height);
        const NoiseEstimate full = noiseOf(decay(1024, 20.0), height);
        EXPECT_TRUE(!empty.isBound && full.isBound);
        EXPECT_NEAR(empty.sigma, sigmaOf(height), 0.1 * sigmaOf(height));
        EXPECT_GT(full.sigma, 0.9 * sigmaOf(height));
        EXPECT_TRUE(height < 1e-1 || full.sigma < 1.5 * sigmaOf(height)) << full.sigma;
    }
}

// Twice as many samples of the same signal have four times its power in each bin.
static PowerSpectra doubled(PowerSpectra spectra) {
    spectra.length *= 2;
    spectra.oversampling *= 2;
    for (double& power : spectra.signal) {
        power *= 4.0;
    }
    return spectra;
}

TEST(AnswerChoice, CountsOversampledNoiseInSamplesOfTheSignal) {
    const Noise known = NoiseModel::white(1e-2, 255);
    for (const auto& [kernel, noise] : {std::pair{peak(255, 2.0), Noise()},
                                        {decay(255, 20.0), Noise()},
                                        {decay(255, 20.0), known}}) {
        const PowerSpectra plain(blurredLines(kernel, 1e-2, 4), kernel);
        const AnswerChoice expected = chooseStrength(RegularizedCurve(plain, 0), noise);
        const AnswerChoice choice = chooseStrength(RegularizedCurve(doubled(plain), 0), noise);
        EXPECT_EQ(choice.parameter, expected.parameter);
        EXPECT_NEAR(choice.predictedError, 2.0 * expected.predictedError, 1e-14);
        EXPECT_NEAR(choice.noise, expected.noise, 0.01 * expected.noise);
        EXPECT_EQ(choice.noiseGiven, noise.has_value());
    }
}

static std::optional<double> whitenessOf(const Signal& signal, const Signal& kernel) {
    return chooseStrength(RegularizedCurve(PowerSpectra(signal, kernel), 2), std::nullopt)
        .whiteness;
}

// Neighbours averaged: the noise is then coloured.
TEST(AnswerChoice, MeasuresWhetherTheResidualIsWhite) {
    const Signal kernel = peak(1024, 4.0), white = blurredLines(kernel, 1e-2, 8);
    Signal coloured = white;
    for (std::size_t i = 1; i < white.size(); ++i) {
        coloured[i] = 0.5 * (white[i] + white[i - 1]);
    }
    EXPECT_LT(whitenessOf(white, kernel).value(), 1.4);
    EXPECT_GT(whitenessOf(coloured, kernel).value(), 4.0);
    const Signal few(kernel.begin(), kernel.begin() + 36);
    EXPECT_FALSE(whitenessOf(few, few));  // 19 bins
}
