#pragma once

#include "matrix/MatrixStore.h"
#include "matrix/arithmetic.h"

#include <algorithm>
#include <cstring>
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

// Elimination in plain loops from the formulas, on n x n elements, row after row. Results of
// SquareMatrix equal theirs bit for bit.

// f becomes L and U of the rows of a in that order, with a reciprocal for each pivot or without.
template <typename T>
void plainFactors(const T* a, int n, const int* order, bool reciprocals, T* f) {
    for (int e = 0; e < n * n; ++e) {
        const int i = e % n, j = e / n;
        T v = a[order[i] * n + j];
        for (int k = 0; k < std::min(i, j); ++k) {
            v = difference(v, product(f[i * n + k], f[k * n + j]));
        }
        const T pivot = f[j * n + j], diagonal = v == 0 && reciprocals ? T(1e-20) : v;
        const T inOrder = pivot == 0 ? T(1e8) : quotient(v, pivot);
        const T below = reciprocals ? product(v, quotient(T(1), pivot)) : inOrder;
        f[i * n + j] = i < j ? v : i == j ? diagonal : below;
    }
}

// x becomes column c of the inverse.
template <typename T>
void plainColumn(const T* f, int n, const int* order, int c, T* x) {
    const auto first = static_cast<int>(std::find(order, order + n, c) - order);
    for (int i = 0; i < n; ++i) {
        x[i] = i == first ? 1 : 0;
        for (int k = first; k < i; ++k) {
            x[i] = difference(x[i], product(f[i * n + k], x[k]));
        }
    }
    for (int i = n - 1; i >= 0; --i) {
        for (int k = i + 1; k < n; ++k) {
            x[i] = difference(x[i], product(f[i * n + k], x[k]));
        }
        x[i] = quotient(x[i], f[i * n + i]);
    }
}
