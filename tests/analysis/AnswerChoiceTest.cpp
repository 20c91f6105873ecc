#include "workbench/analysis/AnswerChoice.h"

#include "tests/support/BlurredLines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
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

// Against every strength that can be chosen. With the outer heights the count lies at an edge,
// where the noise is not known.
TEST(AnswerChoice, IsTheMinimumOfTheCriterion) {
    const Signal kernel = peak(256, 4.0);
    for (const double height : {1e-1, 1e-2, 1e-3, 1e-4}) {
        const PowerSpectra spectra(blurredLines(kernel, height, 3), kernel);
        const IterationCurve steps(spectra, 1.0);
        const RegularizedCurve strengths(spectra, 2);
        for (const Noise& noise : {Noise(), Noise(NoiseModel::white(sigmaOf(height), 256))}) {
            const AnswerChoice count = chooseSteps(steps, noise);
            std::vector<double> counts;
            for (double k = 1.0; k <= count.last; ++k) {
                counts.push_back(k);
            }
            EXPECT_EQ(count.parameter, lowestOf(steps, noise, counts)) << height;
            EXPECT_EQ(chooseStrength(strengths, noise).parameter,
                      lowestOf(strengths, noise, everyStrength()))
                << height;
            EXPECT_TRUE(noise || count.atEdge() == (height != 1e-2 && height != 1e-3)) << height;
        }
    }
}

// A broad peak leaves 5 of 6 bins empty; a decay leaves none, and what is there of noise and
// signal is a bound.
TEST(AnswerChoice, EstimatesTheNoise) {
    const Signal broad = peak(1024, 4.0), sharp = decay(1024, 20.0);
    for (const double height : {1e-1, 1e-2, 1e-4}) {
        const double truth = sigmaOf(height);
        const PowerSpectra empty(blurredLines(broad, height, 4), broad);
        const PowerSpectra full(blurredLines(sharp, height, 4), sharp);
        const AnswerChoice free = chooseSteps(IterationCurve(empty, 1.0), std::nullopt);
        EXPECT_FALSE(free.noiseIsBound || free.noiseGiven);
        EXPECT_NEAR(free.noise, truth, 0.1 * truth);
        const AnswerChoice bound = judgeSteps(IterationCurve(full, 1.0), 5, std::nullopt);
        EXPECT_TRUE(bound.noiseIsBound);
        EXPECT_GT(bound.noise, 0.9 * truth);
        EXPECT_TRUE(height < 1e-1 || bound.noise < 1.5 * truth) << bound.noise;
        const AnswerChoice given =
            judgeStrength(RegularizedCurve(full, 2), 1.0, NoiseModel::white(truth, 1024));
        EXPECT_TRUE(given.noiseGiven && !given.noiseIsBound);
        EXPECT_EQ(given.noise, NoiseModel::white(truth, 1024).sigma());
    }
}

// Twice as many samples of the same signal have four times its power in each bin.
TEST(AnswerChoice, CountsOversampledNoiseInSamplesOfTheSignal) {
    const Signal broad = peak(255, 2.0), sharp = decay(255, 20.0);
    for (const Signal& kernel : {broad, sharp}) {
        const PowerSpectra plain(blurredLines(kernel, 1e-2, 4), kernel);
        PowerSpectra fine = plain;
        fine.length *= 2;
        fine.oversampling = 2;
        std::for_each(fine.signal.begin(), fine.signal.end(), [](double& power) { power *= 4.0; });
        for (const Noise& noise : {Noise(), Noise(NoiseModel::white(1e-2, 255))}) {
            const AnswerChoice expected = chooseStrength(RegularizedCurve(plain, 0), noise);
            const AnswerChoice choice = chooseStrength(RegularizedCurve(fine, 0), noise);
            EXPECT_EQ(choice.parameter, expected.parameter);
            EXPECT_NEAR(choice.predictedError, 2.0 * expected.predictedError, 1e-14);
            EXPECT_NEAR(choice.noise, expected.noise, 0.01 * expected.noise);
        }
    }
}

// Neighbours averaged: the noise is then coloured. What is hardly regularised leaves no bin to it.
TEST(AnswerChoice, MeasuresWhetherTheResidualIsWhite) {
    const Signal kernel = peak(1024, 4.0), white = blurredLines(kernel, 1e-2, 8);
    Signal coloured = white;
    for (std::size_t i = 1; i < white.size(); ++i) {
        coloured[i] = 0.5 * (white[i] + white[i - 1]);
    }
    const auto curveOf = [&kernel](const Signal& signal) {
        return RegularizedCurve(PowerSpectra(signal, kernel), 2);
    };
    EXPECT_LT(chooseStrength(curveOf(white), std::nullopt).whiteness.value(), 1.4);
    EXPECT_GT(chooseStrength(curveOf(coloured), std::nullopt).whiteness.value(), 4.0);
    EXPECT_FALSE(judgeStrength(curveOf(white), 1e-40, std::nullopt).whiteness);
}
