#include "workbench/analysis/RegularizedCurve.h"

#include "tests/support/BlurredLines.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <vector>

namespace {

using Long = std::vector<long double>;

// The normal equations (H'H + l m Q'Q) x = H'y of a periodic block; the rows of Q are the samples,
// or a quarter of their second differences.
struct NormalEquations {
    NormalEquations(const Signal& h, int order, long double factor) : n(h.size()), rows(n) {
        const Long q = order == 0 ? Long{1.0L} : Long{0.25L, -0.5L, 0.25L};
        kernel.assign(h.begin(), h.end());
        for (std::size_t i = 0; i < n; ++i) {
            rows[i].resize(n);
            for (std::size_t j = 0; j < n; ++j) {
                for (std::size_t k = 0; k < n; ++k) {
                    rows[i][j] += tap(kernel, k, i) * tap(kernel, k, j) +
                                  factor * tap(q, k, i) * tap(q, k, j);
                }
            }
            rows[i][i] += order == 0 ? 0.0L : factor * 1e-12L;
        }
    }

    [[nodiscard]] long double tap(const Long& taps, std::size_t row, std::size_t column) const {
        const std::size_t lag = (row + n - column) % n;
        return lag < taps.size() ? taps[lag] : 0.0L;
    }

    // H x. Elimination needs no pivots: the matrix is positive definite.
    [[nodiscard]] Long modelOf(const Long& y) const {
        std::vector<Long> a = rows;
        Long x(n), model(n);
        for (std::size_t i = 0; i < n; ++i) {
            for (std::size_t k = 0; k < n; ++k) {
                x[i] += tap(kernel, k, i) * y[k];
            }
        }
        for (std::size_t pivot = 0; pivot < n; ++pivot) {
            for (std::size_t i = 0; i < n; ++i) {
                const long double ratio = i == pivot ? 0.0L : a[i][pivot] / a[pivot][pivot];
                for (std::size_t j = 0; j < n; ++j) {
                    a[i][j] -= ratio * a[pivot][j];
                }
                x[i] -= ratio * x[pivot];
            }
        }
        for (std::size_t i = 0; i < n; ++i) {
            for (std::size_t k = 0; k < n; ++k) {
                model[i] += tap(kernel, i, k) * x[k] / a[k][k];
            }
        }
        return model;
    }

    std::size_t n;
    std::vector<Long> rows;
    Long kernel;
};

}  // namespace

TEST(RegularizedCurve, IsThatOfTheNormalEquations) {
    for (const int n : {7, 8}) {
        for (const int order : {0, 2}) {
            const Signal kernel = decay(n, 1.5), y = noise(n, 5);
            const PowerSpectra spectra(y, kernel);
            const NormalEquations equations(kernel, order, 0.03L * spectra.largestGain());
            long double error = 0.0L, trace = 0.0L, squares = 0.0L;
            const Long model = equations.modelOf(Long(y.begin(), y.end()));
            for (std::size_t i = 0; i < y.size(); ++i) {
                error += (y[i] - model[i]) * (y[i] - model[i]);
                Long impulse(y.size());
                impulse[i] = 1.0L;
                const Long column = equations.modelOf(impulse);
                trace += column[i];
                for (const long double element : column) {
                    squares += element * element;
                }
            }
            const CurvePoint point = RegularizedCurve(spectra, order).at(0.03);
            EXPECT_NEAR(point.error, static_cast<double>(error), 1e-12) << n << " " << order;
            EXPECT_NEAR(point.kept, static_cast<double>(trace), 1e-12) << n << " " << order;
            EXPECT_NEAR(point.squares, static_cast<double>(squares), 1e-12) << n << " " << order;
        }
    }
}

// By hand: an impulse as kernel has 1 in each bin, so with the penalty 1/2 and the strength 2/3 the
// model is 3/4 of the signal, E = 4/16, A = 3, B = 9/4. Robust cross-validation is then
// 1/4 / (1/4)^2 (1/5 + 4/5 9/16) = 13/5, and noise of the variance 1/2 makes
// 1/4 + 4 1/2 (2 3/4 + 9/16) = 35/8.
TEST(RegularizedCurve, HasTheCriteriaByHand) {
    const RegularizedCurve curve(PowerSpectra({2.0, 0.0, 0.0, 0.0}, {1.0}), std::vector(3, 0.5));
    EXPECT_NEAR(curve.at(2.0 / 3.0).criterion, 13.0 / 5.0, 1e-14);
    const CurvePoint known = curve.at(2.0 / 3.0, NoiseModel::white(std::sqrt(0.5), 4));
    EXPECT_NEAR(known.criterion, 35.0 / 8.0, 1e-14);
    EXPECT_NEAR(known.noiseKept, 33.0 / 8.0, 1e-14);
    EXPECT_NEAR(known.leftSquares, 0.25, 1e-15);
}
