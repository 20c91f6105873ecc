#include "workbench/analysis/IterationCurve.h"

#include "tests/support/Signal.h"
#include "workbench/analysis/StepChoice.h"
#include "workbench/messages/Failure.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

namespace {

using Long = std::vector<long double>;

// The iteration as it is defined: the model lags by one sample, the correlation does not.
struct PlainIteration {
    PlainIteration(Long signal, const Signal& smooth, long double step)
        : y(std::move(signal)),
          h(smooth.begin(), smooth.end()),
          c(step),
          x(y.size()),
          model(y.size()) {}

    void step() {
        const std::size_t n = y.size();
        const Long before = model;
        for (std::size_t m = 0; m < n; ++m) {
            for (std::size_t j = 0; j < n; ++j) {
                x[m] += c * h[j] * (y[(m + j) % n] - before[(m + j) % n]);
            }
        }
        std::fill(model.begin(), model.end(), 0.0L);
        for (std::size_t m = 0; m < n; ++m) {
            for (std::size_t j = 0; j < n; ++j) {
                model[(m + j + 1) % n] += h[j] * x[m];
            }
        }
    }

    [[nodiscard]] double error() const {
        long double sum = 0.0L;
        for (std::size_t i = 0; i < y.size(); ++i) {
            sum += (y[i] - model[i]) * (y[i] - model[i]);
        }
        return static_cast<double>(sum);
    }

    Long y, h;
    long double c;
    Long x, model;
};

}  // namespace

// A peak with the sum 1, wrapped round the front.
static Signal peak(int n, double width) {
    Signal samples(static_cast<std::size_t>(n));
    double sum = 0.0;
    for (int i = 0; i < n; ++i) {
        const double x = (i < n / 2 ? i : i - n) / width;
        samples[static_cast<std::size_t>(i)] = std::exp(-x * x);
        sum += samples[static_cast<std::size_t>(i)];
    }
    for (double& sample : samples) {
        sample /= sum;
    }
    return samples;
}

// Two lines, blurred and late as the time domain makes them, and noise.
static Signal measured(const Signal& kernel, double noiseHeight, std::uint64_t seed) {
    const int n = static_cast<int>(kernel.size());
    Signal lines(kernel.size());
    lines[kernel.size() / 3] = 1.0;
    lines[kernel.size() / 2] = 2.0;
    Signal y = laggingFold(lines, kernel);
    const Signal disturbance = noise(n, seed);
    for (std::size_t i = 0; i < y.size(); ++i) {
        y[i] += noiseHeight * disturbance[i];
    }
    return y;
}

// What the curve says against the definition, and the last step that does not raise the error.
static std::int64_t lastFallOf(PlainIteration plain, const IterationCurve& curve) {
    std::int64_t falling = 0;
    double last = plain.error();
    EXPECT_NEAR(curve.at(0).error, last, 1e-12 * last);
    for (std::int64_t k = 1; k <= 60; ++k) {
        plain.step();
        const double error = plain.error();
        EXPECT_NEAR(curve.at(k).error, error, 1e-11 * error) << k;
        EXPECT_TRUE(curve.predicts(error, k) && !curve.predicts(1.00001 * error, k)) << k;
        EXPECT_FALSE(curve.predicts(error, k + 1)) << k;
        falling += error <= last ? 1 : 0;  // never after a rise: the curve is convex
        last = error;
    }
    return falling;
}

// The narrow peak soon makes the error rise, the broad one does not.
TEST(IterationCurve, HasTheErrorsAndTheLastFallOfTheDefinition) {
    for (const int n : {24, 25, 32}) {
        for (const double width : {1.0, 2.0}) {
            const Signal kernel = peak(n, width), y = measured(kernel, 1e-3, 1);
            const IterationCurve curve(PowerSpectra(y, kernel), 0.9);
            const std::int64_t falling =
                lastFallOf(PlainIteration(Long(y.begin(), y.end()), kernel, 0.9L), curve);
            EXPECT_EQ(curve.lastFalling(60), falling) << n << " " << width;
        }
    }
}

// Trace, and sum of the squared elements, of the matrix from signal to model after k steps: what
// becomes of unit impulses stands in its columns.
static std::pair<long double, long double> freedomOf(const Signal& kernel, std::int64_t k) {
    long double trace = 0.0L, squares = 0.0L;
    for (std::size_t i = 0; i < kernel.size(); ++i) {
        Long impulse(kernel.size());
        impulse[i] = 1.0L;
        PlainIteration plain(impulse, kernel, 0.7L);
        for (std::int64_t step = 0; step < k; ++step) {
            plain.step();
        }
        trace += plain.model[i];
        squares +=
            std::inner_product(plain.model.begin(), plain.model.end(), plain.model.begin(), 0.0L);
    }
    return {trace, squares};
}

TEST(IterationCurve, CountsTheFreedomOfTheMatrixFromSignalToModel) {
    for (const int n : {6, 7}) {
        const Signal kernel = peak(n, 0.8);
        const IterationCurve curve(PowerSpectra(noise(n, 2), kernel), 0.7);
        for (const std::int64_t k : {1, 2, 9}) {
            const auto [trace, squares] = freedomOf(kernel, k);
            EXPECT_NEAR(curve.at(k).kept, static_cast<double>(trace), 1e-12);
            EXPECT_NEAR(curve.at(k).squares, static_cast<double>(squares), 1e-12);
        }
    }
}

// By hand: 8 / (3/4)^2 (1/5 + 4/5 1/8) = 64/15.
TEST(StepChoice, IsTheMinimumOfTheCriterion) {
    const Signal four = {1.0, 2.0, 3.0, 4.0};
    const IterationCurve tiny(PowerSpectra(four, four), 0.01);
    EXPECT_NEAR(tiny.robustGcv({.steps = 1, .error = 8.0, .kept = 1.0, .squares = 0.5}),
                64.0 / 15.0, 1e-14);

    const Signal kernel = peak(256, 4.0);
    for (const double height : {1e-1, 1e-2, 1e-3, 1e-4}) {  // the outer ones at an edge
        const IterationCurve curve(PowerSpectra(measured(kernel, height, 3), kernel), 1.0);
        const StepChoice choice = chooseSteps(curve);
        std::int64_t best = 1;
        for (std::int64_t k = 2; k <= choice.lastStep; ++k) {
            best = curve.robustGcv(curve.at(k)) < curve.robustGcv(curve.at(best)) ? k : best;
        }
        EXPECT_EQ(choice.steps, best) << height;
        EXPECT_EQ(choice.atEdge(), height != 1e-2 && height != 1e-3) << choice.steps;
    }
}

// A width of 4 leaves 5 of 6 bins empty; that of a single sample leaves none, and what is there of
// noise and signal is a bound. Uniform noise of the height 1 has the variance 1/3.
TEST(StepChoice, EstimatesTheNoise) {
    for (const double height : {1e-2, 1e-4}) {
        const Signal broad = peak(1024, 4.0), narrow = peak(1024, 0.1);
        const double truth = height / std::sqrt(3.0);
        const StepChoice choice =
            chooseSteps(IterationCurve(PowerSpectra(measured(broad, height, 4), broad), 1.0));
        EXPECT_FALSE(choice.noiseIsBound);
        EXPECT_NEAR(choice.noise, truth, 0.1 * truth);
        const StepChoice bound =
            judgeSteps(IterationCurve(PowerSpectra(measured(narrow, height, 4), narrow), 0.1), 5);
        EXPECT_TRUE(bound.noiseIsBound);
        EXPECT_GT(bound.noise, 0.9 * truth);
    }
}

static bool refuses(const Signal& signal, const Signal& kernel) {
    try {
        PowerSpectra(signal, kernel);
    } catch (const Failure&) {
        return true;
    }
    return false;
}

TEST(PowerSpectra, RefuseWhatLeavesTheRange) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    for (const double bad : {0.0, 1e-170, 1e160, nan}) {
        EXPECT_TRUE(refuses({bad, bad, bad}, {1.0, 2.0})) << bad;
        EXPECT_TRUE(refuses({1.0, 2.0}, {bad, bad, bad})) << bad;
    }
    EXPECT_FALSE(refuses({3.0}, {2.0}));
}
