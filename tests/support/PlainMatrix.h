#pragma once

#include "matrix/MatrixStore.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <numeric>
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

template <typename T>
T lessProduct(T v, T a, T b) {
    return static_cast<T>(Wide<T>(v) - Wide<T>(a) * Wide<T>(b));
}

template <typename T>
T over(T a, T b) {
    const bool undefined = std::is_same_v<T, int> && b == 0;
    return undefined ? T(0) : static_cast<T>(Wide<T>(a) / Wide<T>(undefined ? 1 : b));
}

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

// The last row from k down whose element in column k is largest, each times its scale.
template <typename T>
int plainPivotRow(const T* a, int n, int k, const T* scales) {
    int best = k;
    Wide<T> largest = 0;
    for (int i = k; i < n; ++i) {
        const Wide<T> score = std::abs(Wide<T>(a[i * n + k])) * scales[i];
        best = score >= largest ? i : best;
        largest = std::max(largest, score);
    }
    return best;
}

// Gaussian elimination: each pivot row is subtracted from the whole rest of the matrix. An empty
// order leaves the rows where they are; else it receives theirs. No row may be zero.
template <typename T>
void plainEliminate(T* a, int n, std::vector<int>& order) {
    const bool exchanges = !order.empty();
    std::vector<T> scales(static_cast<std::size_t>(n));
    std::iota(order.begin(), order.end(), 0);
    for (int e = 0; e < n * n; ++e) {
        T& largest = scales.data()[e / n];
        largest = std::max(largest, std::abs(a[e]));
    }
    for (T& scale : scales) {
        scale = over(T(1), scale);
    }
    for (int k = 0; k < n; ++k) {
        const int best = exchanges ? plainPivotRow(a, n, k, scales.data()) : k;
        if (best != k) {
            std::swap_ranges(a + k * n, a + k * n + n, a + best * n);
            std::swap(scales.data()[k], scales.data()[best]);
            std::swap(order.data()[k], order.data()[best]);
        }
        T& pivot = a[k * n + k];
        pivot = exchanges && pivot == 0 ? static_cast<T>(1e-20) : pivot;
        for (T* row = a + (k + 1) * n; row < a + n * n; row += n) {
            const T inOrder = pivot == 0 ? static_cast<T>(1e8) : over(row[k], pivot);
            row[k] = exchanges ? static_cast<T>(Wide<T>(row[k]) * over(T(1), pivot)) : inOrder;
            for (int j = k + 1; j < n; ++j) {
                row[j] = lessProduct(row[j], row[k], a[k * n + j]);
            }
        }
    }
}

// b becomes the solution. Zeros that lead it, in the order of the rows, take part in no product.
template <typename T>
void plainSolve(const T* factors, int n, const std::vector<int>& order, T* b) {
    const std::vector<T> input(b, b + n);
    int first = n;
    for (int i = n - 1; i >= 0; --i) {
        b[i] = input.data()[order.empty() ? i : order.data()[i]];
        first = b[i] != 0 ? i : first;
    }
    for (int k = first; k < n; ++k) {
        for (int i = k + 1; i < n; ++i) {
            b[i] = lessProduct(b[i], factors[i * n + k], b[k]);
        }
    }
    for (int i = n - 1; i >= 0; --i) {
        for (int k = i + 1; k < n; ++k) {
            b[i] = lessProduct(b[i], factors[i * n + k], b[k]);
        }
        b[i] = over(b[i], factors[i * n + i]);
    }
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
