#pragma once

#include "matrix/Matrix.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <random>
#include <vector>

// Kinds of matrices on which decompositions are hard, or easy to get wrong.

// In float, which every C library rounds alike.
inline double power(double base, double exponent) {
    return static_cast<double>(static_cast<float>(std::pow(base, exponent)));
}

// An element of an m x n matrix, k = min(m, n); noise is in [-1, 1).
struct Place {
    int i, j, m, n, k;
    double noise;
    [[nodiscard]] double onDiagonal(double value) const { return i == j ? value : 0; }
    // Singular values from 1 down to smallest.
    [[nodiscard]] double geometric(double smallest) const {
        return onDiagonal(k > 1 ? power(smallest, i / (k - 1.0)) : 1);
    }
};

struct MatrixKind {
    const char* name;
    double (*element)(const Place& at);
    bool mixed = false;   // multiplied by random reflections from either side
    double smallest = 0;  // least singular value but 0, where the test has to know it
};

inline const MatrixKind matrixKinds[] = {
    {"diagonal", [](const Place& at) { return at.onDiagonal(at.noise); }},
    {"triangular", [](const Place& at) { return at.i <= at.j ? at.noise : 0; }},
    {"condition 2", [](const Place& at) { return at.geometric(0.5); }, true},
    {"condition 0.1/eps", [](const Place& at) { return at.geometric(10 * 0x1p-53); }, true},
    {"first column zero", [](const Place& at) { return at.j > 0 ? at.noise : 0; }},
    {"last column zero", [](const Place& at) { return at.j + 1 < at.n ? at.noise : 0; }},
    {"half the columns zero", [](const Place& at) { return at.j < at.n / 2 ? at.noise : 0; }},
    {"near underflow", [](const Place& at) { return 0x1p-971 * at.geometric(0.5); }, true},
    {"near overflow", [](const Place& at) { return 0x1p971 * at.geometric(0.5); }, true},
    {"graded",
     [](const Place& at) { return at.noise * power(1e-16, 1.0 * (at.i + at.j) / (at.m + at.n)); }},
    {"rank deficient", [](const Place& at) { return at.onDiagonal(at.i < at.k / 2 ? 1 : 0); }, true,
     1},
    {"rank deficient, large",
     [](const Place& at) { return at.onDiagonal(at.i < at.k / 2 ? 0x1p20 : 0); }, true, 0x1p20},
    {"repeated values", [](const Place& at) { return at.onDiagonal(1 + at.i % 2); }, true},
    {"Hilbert", [](const Place& at) { return 1.0 / (at.i + at.j + 1); }},
    {"Vandermonde", [](const Place& at) { return power((at.i + 1.0) / at.m, at.j); }},
    {"Frank", [](const Place& at) { return at.j + 1 < at.i ? 0.0 : at.m - std::max(at.i, at.j); }},
    {"Kahan",
     [](const Place& at) {
         return power(0.9320, at.i) * (at.i < at.j ? -0.3624 : at.onDiagonal(1));
     }},
    {"Lauchli", [](const Place& at) { return at.i == 0          ? 1
                                             : at.i == at.j + 1 ? 0x1p-26
                                                                : 0.0; }},
    // A cancellation over all rows of it.
    {"singular bidiagonal",
     [](const Place& at) { return at.j == at.i + 1 ? 1 : at.onDiagonal(at.i == 0 ? 0 : 1); }},
    // In its cancellation svd meets first a small, then a negligible and then a large element.
    {"bidiagonal with a zero",
     [](const Place& at) {
         const double above = at.i == 0 ? 1e-3 : at.i == 1 ? 1e-14 : 1;
         return at.j == at.i + 1 ? above : at.onDiagonal(at.i == 0 ? 0 : 1);
     }},
};

inline double noiseIn(std::mt19937& random) {
    return std::ldexp(static_cast<double>(random()), -31) - 1;
}

// a becomes (I - 2 x x^T / x^T x) a with a random x.
inline void reflectAtRandom(Matrix<double>& a, std::mt19937& random) {
    std::vector<double> x(static_cast<std::size_t>(a.rowCount));
    std::generate(x.begin(), x.end(), [&] { return noiseIn(random); });
    const double squares = std::inner_product(x.begin(), x.end(), x.begin(), 0.0);
    for (int j = 0; j < a.colCount; ++j) {
        double t = 0;
        for (int i = 0; i < a.rowCount; ++i) {
            t += x.data()[i] * a.rowTable[i][j];
        }
        for (int i = 0; i < a.rowCount; ++i) {
            a.rowTable[i][j] -= 2 * t / squares * x.data()[i];
        }
    }
}

inline Matrix<double> makeMatrix(const MatrixKind& kind, int m, int n) {
    std::mt19937 random(static_cast<unsigned>(m + 1000 * n));
    Matrix<double> a(m, n);
    for (int e = 0; e < m * n; ++e) {
        a.dataBlock[e] = kind.element({e / n, e % n, m, n, std::min(m, n), noiseIn(random)});
    }
    for (int r = 0; kind.mixed && r < 2 * std::min(8, std::max(m, n)); ++r) {
        reflectAtRandom(a, random);
        a.transpose();
    }
    return a;
}
