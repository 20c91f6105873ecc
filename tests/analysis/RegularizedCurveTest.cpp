#include "workbench/analysis/RegularizedCurve.h"

#include "matrix/SquareMatrix.h"
#include "tests/support/BlurredLines.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <numeric>
#include <utility>
#include <vector>

// With these taps from index 0 on, periodic.
static SquareMatrix<double> circulant(const Signal& taps, int n) {
    SquareMatrix<double> matrix(n);
    for (int i = 0; i < n * n; ++i) {
        const auto lag = static_cast<std::size_t>((i / n + n - i % n) % n);
        matrix.dataBlock[i] = lag < taps.size() ? taps[lag] : 0.0;
    }
    return matrix;
}

// From signal to model by the normal equations, H (H'H + f Q'Q)^-1 H'. The rows of Q are samples,
// or second differences, a quarter of them; 1e-12 is added for the mean.
static SquareMatrix<double> modelMatrix(const Signal& kernel, int order, double factor) {
    const int n = static_cast<int>(kernel.size());
    const SquareMatrix<double> h = circulant(kernel, n);
    const Signal differences = {0.25, -0.5, 0.25};
    const SquareMatrix<double> q = circulant(order == 0 ? Signal{1.0} : differences, n);
    SquareMatrix<double> hTransposed(h), qTransposed(q), inverse(n), product(n), model(n);
    hTransposed.transpose();
    qTransposed.transpose();
    product.multiply(qTransposed, q);
    inverse.multiply(hTransposed, h);
    for (int i = 0; i < n * n; ++i) {
        const double mean = order == 2 && i % (n + 1) == 0 ? 1e-12 : 0.0;
        inverse.dataBlock[i] += factor * (product.dataBlock[i] + mean);
    }
    inverse.invert(true);
    product.multiply(inverse, hTransposed);
    model.multiply(h, product);
    return model;
}

TEST(RegularizedCurve, IsThatOfTheNormalEquations) {
    for (const auto& [n, order] : {std::pair{7, 0}, {8, 0}, {7, 2}, {8, 2}}) {
        const Signal kernel = decay(n, 1.5), y = noise(n, 5);
        const PowerSpectra spectra(y, kernel);
        const auto model = modelMatrix(kernel, order, 0.03 * spectra.largestGain());
        double error = 0.0, trace = 0.0, squares = 0.0;
        for (int i = 0; i < n; ++i) {
            const double* row = model.rowTable[i];
            const double left = y.begin()[i] - std::inner_product(row, row + n, y.begin(), 0.0);
            error += left * left;
            trace += row[i];
            squares += std::inner_product(row, row + n, row, 0.0);
        }
        const CurvePoint point = RegularizedCurve(spectra, order).at(0.03);
        EXPECT_NEAR(point.error, error, 1e-12) << n << " " << order;
        EXPECT_NEAR(point.kept, trace, 1e-12) << n << " " << order;
        EXPECT_NEAR(point.squares, squares, 1e-12) << n << " " << order;
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
