#include "workbench/analysis/NoiseModel.h"

#include "tests/support/Signal.h"
#include "workbench/messages/Failure.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

TEST(NoiseModel, SumsUpToTheVariance) {
    for (const int n : {8, 9}) {
        EXPECT_NEAR(NoiseModel::white(3.0, n).sigma(), 3.0, 1e-14);
        EXPECT_NEAR(NoiseModel::ofCounts({0.0, 7.0, 5.0}, n).sigma(), 2.0, 1e-14);
    }
}

// x[i] = a x[i - 1] + e[i] with e of the variance 1/3 has the power 1/3 / |1 - a exp(-i w)|^2, here
// 361 times as high at one end as at the other. 2000 samples, 22 neighbours with triangular
// weights: deviations near 0.17, never of a factor of 2.
TEST(NoiseModel, FollowsTheSpectrumOfAQuietStretch) {
    constexpr double a = 0.9;
    Signal quiet = noise(2100, 6);
    for (std::size_t i = 1; i < quiet.size(); ++i) {
        quiet[i] += a * quiet[i - 1];
    }
    quiet.erase(quiet.begin(), quiet.begin() + 100);
    for (double& sample : quiet) {
        sample += 50.0;
    }
    for (const int n : {300, 5001}) {
        const NoiseModel model = NoiseModel::ofStretch(quiet, n);
        ASSERT_EQ(static_cast<int>(model.power().size()), n / 2 + 1);
        double logs = 0.0;
        for (std::size_t j = 0; j < model.power().size(); ++j) {
            const double w = 2.0 * std::numbers::pi * static_cast<double>(j) / n;
            const double truth = 1.0 / 3.0 / (1.0 + a * a - 2.0 * a * std::cos(w));
            const double deviation = std::log(model.power()[j] / truth);
            EXPECT_LT(std::abs(deviation), std::numbers::ln2) << n << " " << j;
            logs += deviation;
        }
        EXPECT_NEAR(logs / static_cast<double>(model.power().size()), 0.0, 0.06) << n;
    }
}

TEST(NoiseModel, RefusesWhatCannotBeMeasured) {
    EXPECT_THROW(NoiseModel::ofStretch(noise(63, 1), 100), Failure);
    EXPECT_NO_THROW(NoiseModel::ofStretch(noise(64, 1), 100));
    EXPECT_THROW(NoiseModel::ofCounts({1.0, -2.0}, 2), Failure);
}
