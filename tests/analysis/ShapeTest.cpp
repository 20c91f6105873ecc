#include "tests/support/Signal.h"
#include "tests/support/expectNear.h"
#include "workbench/analysis/Ends.h"
#include "workbench/analysis/KernelShape.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <numbers>
#include <vector>

TEST(Ends, TakeTheRoomOfTheKernel) {
    const auto rooms = [](std::size_t length, std::size_t support) {
        std::vector<std::size_t> sides;
        for (const Ends ends : {Ends::periodic, Ends::zero, Ends::odd, Ends::bridge}) {
            const EndRoom room = roomFor(ends, length, support);
            sides.insert(sides.end(), {room.before, room.after});
        }
        return sides;
    };
    using Sides = std::vector<std::size_t>;
    EXPECT_EQ(rooms(100, 7), (Sides{0, 0, 0, 6, 7, 7, 0, 7}));
    EXPECT_EQ(rooms(5, 7), (Sides{0, 0, 0, 6, 4, 4, 0, 7}));
    EXPECT_EQ(rooms(1, 1), (Sides{0, 0, 0, 0, 0, 0, 0, 1}));
    EXPECT_EQ(rooms(5, 0), (Sides{0, 0, 0, 0, 0, 0, 0, 0}));
}

// By hand.
TEST(Ends, Extend) {
    const Signal x = {1.0, 3.0, -2.0, 5.0};
    EXPECT_EQ(extended(x, Ends::periodic, {}), x);
    EXPECT_EQ(extended(x, Ends::zero, {1, 2}), (Signal{0.0, 1.0, 3.0, -2.0, 5.0, 0.0, 0.0}));
    EXPECT_EQ(extended(x, Ends::odd, {3, 2}),
              (Signal{-3.0, 4.0, -1.0, 1.0, 3.0, -2.0, 5.0, 12.0, 7.0}));
    const Signal half = {1.0, 3.0, -2.0, 5.0, 3.0 + std::sqrt(2.0), 3.0, 3.0 - std::sqrt(2.0)};
    expectNear(extended(x, Ends::bridge, {0, 3}), half, 1e-14);
}

TEST(Ends, ContinueAStraightLineToTheLastBit) {
    Signal line(30);
    for (std::size_t i = 0; i < line.size(); ++i) {
        line[i] = 7.0 - 3.0 * static_cast<double>(i);
    }
    const Signal middle(line.begin() + 10, line.begin() + 20);
    EXPECT_EQ(extended(middle, Ends::odd, {9, 9}), Signal(line.begin() + 1, line.end() - 1));
}

TEST(Ends, DifferBeyondFiveDeviations) {
    EXPECT_FALSE(endsDiffer({1.0, 9.0, -4.0}, 1.0));
    EXPECT_TRUE(endsDiffer({1.0, 9.0, -4.1}, 1.0));
    EXPECT_TRUE(endsDiffer({-4.1, 9.0, 1.0}, 1.0));
}

static double gammaDensity(double t, int order) {
    return std::exp((order - 1) * std::log(t) - t - std::lgamma(order));
}

// The response of the blood to a short event: a peak, and a sixth of its area as undershoot.
static Signal doubleGamma() {
    Signal samples(320);
    for (std::size_t i = 1; i < samples.size(); ++i) {
        const double t = 0.1 * static_cast<double>(i);
        samples[i] = gammaDensity(t, 6) - gammaDensity(t, 16) / 6.0;
    }
    return samples;
}

static Signal shapeOf(const Signal& kernel) {
    const KernelPeak peak = peakOf(kernel);
    return {static_cast<double>(peak.index), peak.correlation, peak.centroid,
            static_cast<double>(supportOf(kernel))};
}

// By hand, at any scale.
TEST(KernelShape, IsThatAboutTheMaximum) {
    for (const double a : {1.0, -1e-200, 1e200}) {
        expectNear(shapeOf({0.0, a, 2.0 * a, a}), {2.0, 1.0, 2.0, 4.0}, 1e-15);
        expectNear(shapeOf({0.0, 2.0 * a, -a, a, 0.0}), {1.0, 4.0 / 6.0, 7.0 / 4.0, 4.0}, 1e-15);
    }
    EXPECT_EQ(shapeOf({0.0, 0.0}), Signal(4));
    EXPECT_EQ(supportOf({1.0, 0.0, -1.01e-6, 0.99e-6, 0.0}), 3U);
    EXPECT_NEAR(peakOf(doubleGamma()).correlation, 0.925, 5e-4);
}

// A whole period of a cosine, however it begins, with a little noise; a part of it, and a ramp.
TEST(Ends, MeetRoughlyWhereAPeriodIsCut) {
    const Signal disturbance = noise(100, 1);
    Signal ramp, period;
    for (int i = 0; i < 100; ++i) {
        const auto noisy = 1e-3 * disturbance[static_cast<std::size_t>(i)];
        ramp.push_back(0.01 * i + noisy);
        period.push_back(std::cos(0.02 * std::numbers::pi * i + 1.0) + noisy);
    }
    EXPECT_FALSE(meetsRoughly(period));
    EXPECT_TRUE(meetsRoughly(Signal(period.begin(), period.begin() + 70)));
    EXPECT_TRUE(meetsRoughly(ramp));
    EXPECT_FALSE(meetsRoughly({1.0, 9.0, 1.0}));
}
