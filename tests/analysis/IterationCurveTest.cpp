#include "workbench/analysis/IterationCurve.h"

#include "tests/support/BlurredLines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <numeric>
#include <utility>
#include <vector>

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

// What the curve says against the definition, and the last step that does not raise the error.
static std::int64_t lastFallOf(PlainIteration plain, const IterationCurve& curve) {
    std::int64_t falling = 0;
    double last = plain.error();
    EXPECT_NEAR(curve.at(0).error, last, 1e-12 * last);
    for (std::int64_t k = 1; k <= 60; ++k) {
        plain.step();
        const double error = plain.error();
        EXPECT_NEAR(curve.at(static_cast<double>(k)).error, error, 1e-11 * error) << k;
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
            const Signal kernel = peak(n, width), y = blurredLines(kernel, 1e-3, 1);
            const IterationCurve curve(PowerSpectra(y, kernel), 0.9);
            const std::int64_t falling =
                lastFallOf(PlainIteration(Long(y.begin(), y.end()), kernel, 0.9L), curve);
            EXPECT_EQ(curve.lastFalling(60), falling) << n << " " << width;
        }
    }
}

// r samples for each one by Dirichlet's kernel, the old ones at the multiples of r after the lag.
// For r above 1 the number of samples is odd.
static Signal interpolated(const Signal& samples, int r, int lag) {
    const int n = static_cast<int>(samples.size());
    Signal fine;
    for (int i = 0; i < n * r; ++i) {
        fine.push_back(0.0);
        for (int m = 0; m < n; ++m) {
            const double x = std::numbers::pi * (static_cast<double>(i - lag) / r - m);
            const double weight = std::sin(x / n) == 0.0 ? n : std::sin(x) / std::sin(x / n);
            fine.back() += weight / n * samples[static_cast<std::size_t>(m)];
        }
    }
    return fine;
}

// Where the iteration runs oversampled, the signal is late by the lag of the finer time domain.
static PlainIteration runOf(const Signal& signal, const Signal& fineKernel, int r) {
    const Signal y = interpolated(signal, r, r > 1 ? 1 : 0);
    return {Long(y.begin(), y.end()), fineKernel, 0.7L};
}

// Trace, and sum of the squared elements, of the matrix from a signal to the samples of its model
// that stand where the old ones stood, after k steps: what becomes of impulses is in its columns.
static std::pair<double, double> freedomOf(const Signal& fineKernel, int n, int r, int k) {
    long double trace = 0.0L, squares = 0.0L;
    for (int i = 0; i < n; ++i) {
        Signal impulse(static_cast<std::size_t>(n));
        impulse[static_cast<std::size_t>(i)] = 1.0;
        PlainIteration plain = runOf(impulse, fineKernel, r);
        for (int step = 0; step < k; ++step) {
            plain.step();
        }
        for (int m = 0; m < n; ++m) {
            const long double element = plain.model.begin()[m * r + (r > 1 ? 1 : 0)];
            trace += m == i ? element : 0.0L;
            squares += element * element;
        }
    }
    return {static_cast<double>(trace), static_cast<double>(squares)};
}

// Of error, freedom kept, squares and squares left.
static double farthest(const CurvePoint& point, const Signal& expected) {
    const Signal actual = {point.error, point.kept, point.squares, point.leftSquares};
    return std::transform_reduce(
        actual.begin(), actual.end(), expected.begin(), 0.0,
        [](double x, double y) { return std::max(x, y); },
        [](double x, double y) { return std::abs(x - y); });
}

TEST(IterationCurve, CountsTheFreedomOfTheMatrixFromSignalToModel) {
    for (const auto& [n, r] : {std::pair{6, 1}, {7, 1}, {7, 2}, {5, 4}}) {
        Signal kernel = interpolated(peak(n, 0.8), r, 0);
        for (double& sample : kernel) {
            sample /= r;
        }
        PlainIteration plain = runOf(noise(n, 2), kernel, r);
        const IterationCurve curve(PowerSpectra(Signal(plain.y.begin(), plain.y.end()), kernel, r),
                                   0.7);
        for (const int k : {1, 2, 3}) {
            plain.step();
            const auto [trace, squares] = freedomOf(kernel, n, r, k);
            const Signal expected = {plain.error(), trace, squares, n - 2.0 * trace + squares};
            EXPECT_LT(farthest(curve.at(k), expected), 1e-12) << n << " " << r;
        }
    }
}
