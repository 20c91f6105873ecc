#include "matrix/SquareMatrix.h"

#include "tests/support/PlainMatrix.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <tuple>

// Elements in [-4, 5), or the integers among them, with zeros and ties.
template <typename T>
static void fillWithNoise(MatrixStore<T>& a, bool integers) {
    std::mt19937 random(static_cast<unsigned>(a.rowCount));
    for (int e = 0; e < a.rowCount * a.colCount; ++e) {
        const double value = std::ldexp(static_cast<double>(random()), -32) * 9 - 4;
        a.dataBlock[e] = static_cast<T>(integers ? std::floor(value) : value);
    }
}

template <typename T>
static bool equalsPlainLoops(int n, bool integers, bool pivot) {
    SquareMatrix<T> a(n);
    fillWithNoise(a, integers);
    SquareMatrix<T> factors(a), inverse(a), columns(n);
    Vector<int> pivots(pivot ? n : 0, 0);
    std::vector<int> order(static_cast<std::size_t>(pivot ? n : 0));
    std::vector<T> f = elementsOf(a);
    plainEliminate(f.data(), n, order);
    bool equal = factors.luDecompose(pivots) == 1 && holds(factors, f) && holds(pivots, order);
    for (int j = 0; equal && j < n; ++j) {
        Vector<T> b(n, j % 2), x;
        b.setZero();
        b.dataBlock[j] = 1;
        T* column = columns.rowTable[j];
        std::copy_n(b.dataBlock, n, column);
        plainSolve(f.data(), n, order, column);
        equal = a.solve(b, x, pivot) == 1 && holds(x, {column, column + n}) &&
                factors.luSolve(b, pivots) == 1 && holds(b, {column, column + n}) &&
                b.colCount == (j % 2 != 0 ? 1 : n);
    }
    return equal && inverse.invert(pivot) == 1 && inverse.transpose() == 1 &&
           holds(inverse, elementsOf(columns));
}

TEST(SquareMatrix, EliminationEqualsThePlainLoops) {
    for (const int n : {0, 1, 2, 3, 5, 8, 9, 16, 17, 31, 32, 33, 70, 130}) {
        for (const bool pivot : {false, true}) {
            EXPECT_TRUE(equalsPlainLoops<double>(n, false, pivot) &&
                        equalsPlainLoops<double>(n, true, pivot) &&
                        equalsPlainLoops<int>(n, true, pivot))
                << n << " rows, pivots: " << pivot;
        }
    }
}

TEST(SquareMatrix, CholeskyEqualsThePlainLoops) {
    for (int n = 1; n < 70; n += n < 20 ? 1 : 7) {
        SquareMatrix<double> a(n), transposed(n), unit(n);
        fillWithNoise(transposed, false);
        a.assign(transposed);
        unit.setIdentity();
        transposed.transpose();
        a.mulAssign(transposed).addAssign(unit);
        std::vector<double> factor = elementsOf(a);
        plainCholesky(factor.data(), n);
        EXPECT_TRUE(a.cholesky() == 1 && holds(a, factor)) << n;
    }
}

template <typename T>
static bool multipliesLikeThePlainLoop(int rows, int depth, int cols) {
    Matrix<T> a(rows, depth), b(depth, cols), c;
    fillWithNoise(a, false);
    fillWithNoise(b, false);
    return c.multiply(a, b) == 1 &&
           holds(c, plainProduct(a.dataBlock, b.dataBlock, rows, depth, cols));
}

TEST(Matrix, MultiplyEqualsThePlainLoop) {
    for (int n = 1; n < 40; n += n < 12 ? 1 : 5) {
        EXPECT_TRUE(multipliesLikeThePlainLoop<double>(n, 2 * n + 1, n / 2 + 1) &&
                    multipliesLikeThePlainLoop<double>(n / 3 + 1, n, 3 * n) &&
                    multipliesLikeThePlainLoop<int>(n, 3, n + 5))
            << n;
    }
}

// Matrix, result, packed factors, pivots; one pivot stands for Cholesky. With pivots P A = L U
// holds without rounding.
TEST(SquareMatrix, HandWorkedFactors) {
    using Doubles = std::vector<double>;
    const double t = std::ldexp(1.0, -27), root = std::sqrt(15.0) * t;
    const std::tuple<Doubles, int, Doubles, std::vector<int>> table[] = {
        {{2, 1, 4, 3}, 1, {4, 3, 0.5, -0.5}, {1, 0}},  // the last of equal candidates
        {{4, 8, 3, 4, 4, 2, 4, 8, 5}, 1, {4, 4, 2, 1, 4, 3, 1, 1, -2}, {1, 2, 0}},
        // The scale of the first row goes to the last place with it.
        {{1, 0, 0, 0, 4, 0, 4, 4, 2}, 1, {4, 4, 2, 0.25, -1, -0.5, 0, -4, -2}, {2, 0, 1}},
        {{1, 2, 2, 4}, 1, {2, 4, 0.5, 1e-20}, {1, 0}},
        {{0, 0, 1, 2}, -1, {0, 0, 1, 2}, {9, 9}},
        {{2, 1, 4, 3}, 0, {2, 1, 4, 3}, {9, 9, 9}},
        {{0, 1, 1, 1}, 1, {0, 1, 1e8, -99999999}, {}},
        {{4, 2, 2, 5}, 1, {2, 0, 1, 2}, {9}},
        {{4, 2, 3, 5}, -2, {4, 2, 3, 5}, {9}},
        {{4, 6, 6, 1}, -1, {4, 6, 3, 1}, {9}},
        {{0, 1, 1, 1}, -1, {0, 1, 1, 1}, {9}},
        // In ascending order t t would be lost beside 1.
        {{1, 0, t, 0, 1, 1, t, 1, 1 + 16 * t * t}, 1, {1, 0, 0, 0, 1, 0, t, 1, root}, {9}},
    };
    for (const auto& [matrix, result, factors, order] : table) {
        SquareMatrix<double> a(0), upper(0);
        a.assignArray(matrix.data(), matrix.size() > 4 ? 3 : 2, 0);
        const SquareMatrix<double> input(a);
        Vector<int> pivots(static_cast<int>(order.size()), 0);
        std::fill_n(pivots.dataBlock, order.size(), 9);
        bool good = (order.size() == 1 ? a.cholesky() : a.luDecompose(pivots)) == result;
        good = good && holds(a, factors) && holds(pivots, order);
        good = good && a.splitTriangular(a, upper) == 1 && a.multiply(a, upper) == 1;
        for (int i = 0; result == 1 && order.size() > 1 && i < a.rowCount; ++i) {
            const double* row = input.rowTable[pivots.dataBlock[i]];
            good = good && std::equal(row, row + a.colCount, a.rowTable[i]);
        }
        EXPECT_TRUE(good) << testing::PrintToString(matrix);
    }
}

TEST(SquareMatrix, SolvesOrHandsOutACopy) {
    SquareMatrix<double> a(2);
    Vector<double> b, x;
    a.assignArray(std::data({2.0, 1.0, 4.0, 3.0}), 2, 2);
    b.assignArray(std::data({4.0, 10.0}), 2, 1);
    EXPECT_TRUE(a.solve(b, x, true) == 1 && holds(x, {1, 2}));
    EXPECT_TRUE(a.solve(x, x, false) == 1 && holds(x, {0.5, 0}) && holds(a, {2, 1, 4, 3}));
    b.assignArray(std::data({-0.0, -0.0}), 2,
                  1);  // a product with the first one would turn the other
    EXPECT_TRUE(a.luSolve(b, {}) == 1 && holds(b, {0.0, -0.0}));
    a.setZero();
    EXPECT_TRUE(a.solve(b, x, true) == 0 && holds(x, {0.0, -0.0}) && a.invert(true) == 0);
}
