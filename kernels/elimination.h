#pragma once

#include "kernels/arithmetic.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

namespace kernels {

// Triangular factors of the n x n matrix a, whose rows are adjacent, in place: L below the
// diagonal, with a diagonal of 1 that is not stored, and U on and above it. Each element is
//     a[i][j] - a[i][0] a[0][j] - a[i][1] a[1][j] - ...    over k < min(i, j), one by one,
// and below the diagonal then divided by the pivot a[j][j].

// scales[i] becomes 1 over the largest magnitude in row i, elements that are not numbers aside.
// false: a row is all zero; scales from there on are not written.
bool findScales(const double* a, int n, double* scales);

// Rows are exchanged. The pivot of a column is the last of the elements from row j down whose
// magnitude times its scale is largest; one that is not a number is not a candidate, and without
// any candidate the pivot is in row j. A pivot of 0 becomes 1e-20 (for int it stays). Elements are
// multiplied by one reciprocal instead of divided: the two differ in the last bit. Row i of the
// factors is row pivots[i] of the input; scales move with their rows and are meaningless
// afterwards. panel is scratch for panelWidth n elements: the columns searched for pivots, close
// together.
inline constexpr int panelWidth = 8;
void eliminate(double* a, int n, double* scales, int* pivots, double* panel);

// Rows stay where they are. Quotients by a pivot of 0 are 1e8.
void eliminate(double* a, int n);

namespace plain {
template <typename T>
bool findScales(const T* a, int n, T* scales) {
    for (int i = 0; i < n; ++i) {
        T largest = 0;
        for (int j = 0; j < n; ++j) {
            largest = std::max(largest, magnitude(a[j]));
        }
        if (largest == T(0)) {
            return false;
        }
        scales[i] = quotient(T(1), largest);
        a += n;
    }
    return true;
}

// a[i][j] minus the products of the first `count` terms.
template <typename T>
T reduced(const T* a, int n, int i, int j, int count) {
    const T* row = a + std::ptrdiff_t{n} * i;
    T element = row[j];
    for (int k = 0; k < count; ++k) {
        element = difference(element, product(a[std::ptrdiff_t{n} * k + j], row[k]));
    }
    return element;
}

template <typename T>
void eliminate(T* a, int n, T* scales, int* pivots, T* /*panel*/ = nullptr) {
    const auto row = [a, n](int i) { return a + std::ptrdiff_t{n} * i; };
    std::iota(pivots, pivots + n, 0);
    for (int j = 0; j < n; ++j) {
        for (int i = 0; i < j; ++i) {
            row(i)[j] = reduced(a, n, i, j, i);
        }
        T best = 0;
        int pivotRow = j;
        for (int i = j; i < n; ++i) {
            row(i)[j] = reduced(a, n, i, j, j);
            const T candidate = product(magnitude(row(i)[j]), scales[i]);
            if (candidate >= best) {  // >=, so the last of equal candidates is the pivot
                best = candidate;
                pivotRow = i;
            }
        }
        if (pivotRow != j) {
            std::swap_ranges(row(pivotRow), row(pivotRow) + n, row(j));
            scales[pivotRow] = scales[j];  // scale j is not needed again
            std::swap(pivots[pivotRow], pivots[j]);
        }
        if (row(j)[j] == T(0)) {
            row(j)[j] = static_cast<T>(1e-20);
        }
        const T reciprocal = quotient(T(1), row(j)[j]);
        for (int i = j + 1; i < n; ++i) {
            row(i)[j] = product(row(i)[j], reciprocal);
        }
    }
}

template <typename T>
void eliminate(T* a, int n) {
    const auto row = [a, n](int i) { return a + std::ptrdiff_t{n} * i; };
    for (int j = 0; j < n; ++j) {
        for (int i = 0; i <= j; ++i) {
            row(i)[j] = reduced(a, n, i, j, i);
        }
        const T pivot = row(j)[j];
        for (int i = j + 1; i < n; ++i) {
            row(i)[j] =
                pivot == T(0) ? static_cast<T>(1e8) : quotient(reduced(a, n, i, j, j), pivot);
        }
    }
}
}  // namespace plain

inline bool findScales(const int* a, int n, int* scales) {
    return plain::findScales(a, n, scales);
}
inline void eliminate(int* a, int n, int* scales, int* pivots, int* /*panel*/) {
    plain::eliminate(a, n, scales, pivots);
}
inline void eliminate(int* a, int n) {
    plain::eliminate(a, n);
}

}  // namespace kernels
