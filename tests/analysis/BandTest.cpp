#include "workbench/analysis/Band.h"

#include "tests/support/Signal.h"
#include "tests/support/expectNear.h"
#include "workbench/analysis/ExponentialSweep.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

// The variance of each sample by the sum over all impulses; with equal counts it is that of white
// noise.
TEST(Band, IsThatOfTheSum) {
    for (const std::size_t n : {12U, 16U}) {
        const Signal answer = noise(static_cast<int>(n), 1), counts = noise(static_cast<int>(n), 2);
        Signal expected(n);
        for (std::size_t i = 0; i < n; ++i) {
            for (std::size_t k = 0; k < n; ++k) {
                const double f = answer[(5 + i + n - k) % n];
                expected[i] += f * f * std::max(counts[k], 0.0);
            }
            expected[i] = 1.96 * std::sqrt(expected[i]);
        }
        expectNear(bandOfVariances(answer, 5, counts), expected, 1e-13);
        const Signal white(n, bandHalfWidth(answer, 3.0));
        expectNear(bandOfVariances(answer, 0, Signal(n, 9.0)), white, 1e-13 * white[0]);
        expectNear({bandOfNoise(answer, Signal(n / 2 + 1, 9.0))}, {white[0]}, 1e-13 * white[0]);
    }
}

// By hand: noise of the single frequency w = pi / 2, of variance 1, through the differences of
// neighbours, whose spectrum has the square |1 - exp(-i w)|^2 = 2 there.
TEST(Band, IsThatOfTheColourOfTheNoise) {
    const Signal power = {0.0, 0.0, 4.0, 0.0, 0.0};  // N / 2, in two of the 8 bins
    const Signal differences = {1.0, -1.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0};
    EXPECT_NEAR(bandOfNoise(differences, power), 1.96 * std::sqrt(2.0), 1e-14);
}

// Where counts are nothing, so is the band: rounding makes no root of a number below 0.
TEST(Band, IsANumberInEmptyChannels) {
    Signal counts(1024), answer(1024), expected(1024);
    counts[7] = 1e5;
    answer[3] = 1.0;
    expected[7] = 1.96 * std::sqrt(1e5);
    expectNear(bandOfVariances(answer, 3, counts), expected, 1e-4);
}

// By hand: a kernel that an impulse leaves as it is, wherever it stands.
TEST(Resolution, IsTheWidthAtHalfHeight) {
    for (const std::size_t place : {0U, 3U, 7U}) {
        Signal impulse(8);
        impulse[place] = 1.0;
        const Signal widths = {resolutionOf(impulse, {1.0}), resolutionOf(impulse, {1.0, 2.0, 1.5}),
                               resolutionOf(impulse, {1.0, 4.0, 3.0, 1.0}),
                               resolutionOf(impulse, {0.0})};
        expectNear(widths, {1.0, 1.0 + 4.0 / 3.0, 2.0 / 3.0 + 1.5, 0.0}, 1e-13);
    }
    EXPECT_EQ(resolutionOf(Signal(8, 1.0), {1.0}), 8.0);
}

// Half a period lies between two zeros: its frequency is that of its middle, to the second order.
TEST(ExponentialSweep, HasItsFrequencies) {
    const double rate = 48000.0, from = 50.0, to = 800.0;
    const Signal sweep = exponentialSweep(from, to, 2.0, rate, 0.0);
    ASSERT_EQ(sweep.size(), 96000U);
    std::vector<double> zeros = {0.0};
    for (std::size_t i = 2; i < sweep.size(); ++i) {
        if ((sweep[i - 1] < 0.0) != (sweep[i] < 0.0)) {
            zeros.push_back((static_cast<double>(i) - sweep[i] / (sweep[i] - sweep[i - 1])) / rate);
        }
    }
    EXPECT_NEAR(static_cast<double>(zeros.size()), 2.0 * 2.0 * (to - from) / std::log(to / from),
                1);
    for (std::size_t k = 1; k < zeros.size(); ++k) {
        const double frequency = 0.5 / (zeros[k] - zeros[k - 1]);
        const double expected = from * std::pow(to / from, (zeros[k] + zeros[k - 1]) / 2.0 / 2.0);
        EXPECT_NEAR(frequency, expected, 1e-4 * expected) << k;
    }
}

// Half a cosine: a quarter of the fade has (2 - sqrt 2) / 4, the middle 1/2.
TEST(ExponentialSweep, Fades) {
    const Signal plain = exponentialSweep(10.0, 90.0, 1.0, 1000.0, 0.0);
    const Signal faded = exponentialSweep(10.0, 90.0, 1.0, 1000.0, 0.2);
    const double quarter = (2.0 - std::sqrt(2.0)) / 4.0;
    for (const auto& [i, weight] : {std::pair{0, 0.0},
                                    {50, quarter},
                                    {100, 0.5},
                                    {200, 1.0},
                                    {799, 1.0},
                                    {899, 0.5},
                                    {949, quarter},
                                    {999, 0.0}}) {
        const auto place = static_cast<std::size_t>(i);
        EXPECT_NEAR(faded[place], weight * plain[place], 1e-15) << i;
    }
}
