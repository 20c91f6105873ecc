#include "workbench/analysis/IterationCurve.h"

#include "tests/support/BlurredLines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
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

// r samples for each one, the old ones among them; n is odd.
static Signal interpolated(const Signal& samples, int r) {
    const int n = static_cast<int>(samples.size());
    Signal fine(samples.size() * static_cast<std::size_t>(r));
    for (std::size_t i = 0; i < fine.size(); ++i) {
        for (int m = 0; m < n; ++m) {  // Dirichlet's kernel
            const double x = std::numbers::pi * (static_cast<double>(i) / r - m);
            const double weight = std::sin(x / n) == 0.0 ? n : std::sin(x) / std::sin(x / n);
            fine[i] += weight / n * samples[static_cast<std::size_t>(m)];
        }
    }
    return fine;
}

namespace {

// A kernel as the run has it, and what the run makes of a signal.
struct PreparedRun {
    PreparedRun(const Signal& smooth, int factor) : r(factor), kernel(smooth) {
        if (r > 1) {
            kernel = interpolated(kernel, r);
            for (double& sample : kernel) {
                sample /= r;
            }
        }
    }
    // The signal later by the lag of the fine time domain.
    [[nodiscard]] Signal prepared(const Signal& signal) const {
        if (r == 1) {
            return signal;
        }
        Signal fine = interpolated(signal, r);
        std::rotate(fine.begin(), fine.end() - 1, fine.end());
        return fine;
    }

    int r;
    Signal kernel;
};

}  // namespace

// Trace, and sum of the squared elements, of the matrix from signal to model after k steps: what
// becomes of unit impulses stands in its columns.
static std::pair<long double, long double> freedomOf(const PreparedRun& run, std::size_t n,
                                                     std::int64_t k) {
    long double trace = 0.0L, squares = 0.0L;
    for (std::size_t i = 0; i < n; ++i) {
        Signal impulse(n);
        impulse[i] = 1.0;
        const Signal y = run.prepared(impulse);
        PlainIteration plain(Long(y.begin(), y.end()), run.kernel, 0.7L);
        for (std::int64_t step = 0; step < k; ++step) {
            plain.step();
        }
        const auto r = static_cast<std::size_t>(run.r), lag = r > 1 ? std::size_t{1} : 0;
        trace += plain.model[i * r + lag];
        for (std::size_t m = 0; m < n; ++m) {
            squares += plain.model[m * r + lag] * plain.model[m * r + lag];
        }
    }
    return {trace, squares};
}

// Among them the matrix from a signal to the samples of its model that stay, where the iteration
// runs oversampled.
TEST(IterationCurve, CountsTheFreedomOfTheMatrixFromSignalToModel) {
    for (const auto& [n, r] : {std::pair{6, 1}, {7, 1}, {7, 2}, {5, 4}}) {
        const PreparedRun run(peak(n, 0.8), r);
        const Signal y = run.prepared(noise(n, 2));
        const IterationCurve curve(PowerSpectra(y, run.kernel, r), 0.7);
        PlainIteration plain(Long(y.begin(), y.end()), run.kernel, 0.7L);
        for (const int k : {1, 2, 3}) {
            plain.step();
            const CurvePoint point = curve.at(k);
            const auto [trace, squares] = freedomOf(run, static_cast<std::size_t>(n), k);
            EXPECT_NEAR(point.error, plain.error(), 1e-12) << n << " " << r;
            EXPECT_NEAR(point.kept, static_cast<double>(trace), 1e-12);
            EXPECT_NEAR(point.squares, static_cast<double>(squares), 1e-12);
            EXPECT_NEAR(point.leftSquares, n - 2.0 * point.kept + point.squares, 1e-12);
        }
    }
}
