#pragma once

#include "kernels/elimination.h"
#include "kernels/substitution.h"
#include "matrix/MatrixStore.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <numeric>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

// Whether the matrix has these elements, row after row, to the bit.
template <typename T>
bool holds(const MatrixStore<T>& matrix, const std::vector<T>& elements) {
    bool same = matrix.rowCount * matrix.colCount == std::ssize(elements);
    for (int e = 0; same && e < matrix.rowCount * matrix.colCount; ++e) {
        const T* element = matrix.rowTable[e / matrix.colCount] + e % matrix.colCount;
        same = std::memcmp(element, elements.data() + e, sizeof(T)) == 0;
    }
    return same;
}

template <typename T>
std::vector<T> elementsOf(const MatrixStore<T>& matrix) {
    return {matrix.dataBlock, std::next(matrix.dataBlock, matrix.rowCount * matrix.colCount)};
}

// Matrix arithmetic in plain loops, on elements row after row. Results of matrix/ equal theirs bit
// for bit. Integers are computed in 64 bits and wrap when they are stored.
template <typename T>
using Wide = std::conditional_t<std::is_same_v<T, int>, std::int64_t, T>;

// (m x n) = (m x depth)(depth x n), as a sum of outer products.
template <typename T>
std::vector<T> plainProduct(const T* a, const T* b, int m, int depth, int n) {
    std::vector<T> product(static_cast<std::size_t>(m * n));
    for (int k = 0; k < depth; ++k) {
        for (int e = 0; e < m * n; ++e) {
            product.data()[e] = static_cast<T>(product.data()[e] +
                                               Wide<T>(a[e / n * depth + k]) * b[k * n + e % n]);
        }
    }
    return product;
}

// The factors of SquareMatrix::luDecompose. An empty order leaves the rows where they are; else it
// receives theirs. false: a row of zeros, with an order only.
template <typename T>
bool plainEliminate(T* a, int n, std::vector<int>& order) {
    std::vector<T> scales(static_cast<std::size_t>(n));
    if (order.empty()) {
        plain::eliminate(a, n);
    } else if (plain::findScales(a, n, scales.data())) {
        plain::eliminate(a, n, scales.data(), order.data());
    } else {
        return false;
    }
    return true;
}

// b becomes the solution.
template <typename T>
void plainSolve(const T* factors, int n, const std::vector<int>& order, T* b) {
    const std::vector<T> input(b, b + n);
    for (std::size_t i = 0; i < order.size(); ++i) {
        b[i] = input[static_cast<std::size_t>(order[i])];
    }
    plain::substitute(factors, n, Block<T>{b, 1}, 1);
}

// The lower Cholesky factor, row after row.
inline void plainCholesky(double* a, int n) {
    for (int j = 0; j < n; ++j) {
        for (int i = 0; i < n; ++i) {
            double& v = a[j * n + i];
            for (int k = i; i <= j && k-- > 0;) {
                v -= a[j * n + k] * a[i * n + k];
            }
            v = i < j ? v / a[i * n + i] : i == j ? std::sqrt(v) : 0.0;
        }
    }
}
