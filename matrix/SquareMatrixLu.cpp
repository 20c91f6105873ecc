#include "kernels/arithmetic.h"
#include "matrix/SquareMatrix.h"
#include "matrix/newArray.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <numeric>

// a[i][j] minus the sum of a[k][j] a[i][k] over k < count.
template <typename T>
static T reduced(T* const* a, int i, int j, int count) {
    T v = a[i][j];
    for (int k = 0; k < count; ++k) {
        v = difference(v, product(a[k][j], a[i][k]));
    }
    return v;
}

// v minus the sum of row[k] x[k] over from <= k < to.
template <typename T>
static T reduced(T v, const T* row, const T* x, int from, int to) {
    for (int k = from; k < to; ++k) {
        v = difference(v, product(row[k], x[k]));
    }
    return v;
}

// scales[i] is 1 over the largest magnitude in row i; elements that are not numbers do not count.
// false: a row of zeros.
template <typename T>
static bool findScales(T* const* a, int n, T* scales) {
    for (int i = 0; i < n; ++i) {
        T largest = 0;
        for (int j = 0; j < n; ++j) {
            largest = std::max(largest, magnitude(a[i][j]));
        }
        if (largest == T(0)) {
            return false;
        }
        scales[i] = quotient(T(1), largest);
    }
    return true;
}

// Column j of U above the diagonal.
template <typename T>
static void reduceAboveDiagonal(T* const* a, int j) {
    for (int i = 0; i < j; ++i) {
        a[i][j] = reduced(a, i, j, i);
    }
}

// Column j from the diagonal down, still to be divided by the pivot. Returns the pivot row; a
// candidate that is not a number is none, and row j is it where there is no other.
template <typename T>
static int reduceToPivot(T* const* a, int n, int j, const T* scales) {
    T best = 0;
    int pivotRow = j;
    for (int i = j; i < n; ++i) {
        a[i][j] = reduced(a, i, j, j);
        const T t = product(magnitude(a[i][j]), scales[i]);
        if (t >= best) {  // >=, so the last of equal candidates is the pivot
            best = t;
            pivotRow = i;
        }
    }
    return pivotRow;
}

template <typename T>
static void decomposePivoting(T* const* a, int n, T* scales, int* pivots) {
    std::iota(pivots, pivots + n, 0);
    for (int j = 0; j < n; ++j) {
        reduceAboveDiagonal(a, j);
        const int pivotRow = reduceToPivot(a, n, j, scales);
        if (pivotRow != j) {
            std::swap_ranges(a[pivotRow], a[pivotRow] + n, a[j]);
            scales[pivotRow] = scales[j];  // scale j is not needed again
            std::swap(pivots[pivotRow], pivots[j]);
        }
        if (a[j][j] == T(0)) {
            a[j][j] = static_cast<T>(1e-20);
        }
        // One reciprocal and products, not quotients: the two differ in the last bit.
        const T reciprocal = quotient(T(1), a[j][j]);
        for (int i = j + 1; i < n; ++i) {
            a[i][j] = product(a[i][j], reciprocal);
        }
    }
}

template <typename T>
static void decomposeInOrder(T* const* a, int n) {
    for (int j = 0; j < n; ++j) {
        reduceAboveDiagonal(a, j);
        a[j][j] = reduced(a, j, j, j);
        const T pivot = a[j][j];
        for (int i = j + 1; i < n; ++i) {
            a[i][j] = pivot == T(0) ? static_cast<T>(1e8) : quotient(reduced(a, i, j, j), pivot);
        }
    }
}

template <typename T>
int SquareMatrix<T>::luDecompose(Vector<int>& pivots) {
    const int n = this->getCols();
    const int length = pivots.length();
    if (length == 0) {
        decomposeInOrder(this->rowTable, n);
        return 1;
    }
    if (length != n) {
        return 0;
    }
    const std::unique_ptr<T[]> scales = newArray<T>(n);
    if (scales == nullptr) {
        return 0;
    }
    if (!findScales(this->rowTable, n, scales.get())) {
        return -1;
    }
    decomposePivoting(this->rowTable, n, scales.get(), pivots.dataBlock);
    return 1;
}

// b becomes the solution of L U x = b. The zeros that lead b stay as they are and form no product,
// so neither a sign of theirs nor an infinite element of L beside them comes in.
template <typename T>
static void substitute(const T* const* a, int n, T* b) {
    int first = n;  // the first element that is not 0; n until it is found
    for (int i = 0; i < n; ++i) {
        b[i] = reduced(b[i], a[i], b, first, i);
        if (first == n && b[i] != T(0)) {
            first = i;
        }
    }
    for (int i = n - 1; i >= 0; --i) {
        b[i] = quotient(reduced(b[i], a[i], b, i + 1, n), a[i][i]);
    }
}

template <typename T>
int SquareMatrix<T>::luSolve(Vector<T>& b, const Vector<int>& pivots) const {
    const int n = this->getCols();
    const int length = pivots.length();
    if (length != 0 && length != n) {
        return 0;
    }
    if (length == n) {
        Vector<T> reordered(n, b.isColumn());
        if (reordered.length() != n) {
            return 0;
        }
        for (int i = 0; i < n; ++i) {
            reordered.dataBlock[i] = b.dataBlock[pivots.dataBlock[i]];
        }
        if (b.assign(reordered).errorFlag != 0) {
            return 0;
        }
    }
    substitute(this->rowTable, n, b.dataBlock);
    return 1;
}

// All memory is there before the receiver is touched: column j of the inverse grows in row j of a
// working matrix, from unit vector j in the order of the pivots.
template <typename T>
int SquareMatrix<T>::invert(bool pivot) {
    const int n = this->getCols();
    const int pivotCount = pivot ? n : 0;
    SquareMatrix inverse(n);
    Vector<int> pivots(pivotCount, 0);
    if (inverse.errorFlag != 0 || pivots.length() != pivotCount || luDecompose(pivots) != 1) {
        return 0;
    }
    for (int j = 0; j < n; ++j) {
        T* column = inverse.rowTable[j];
        for (int i = 0; i < n; ++i) {
            column[i] = (pivot ? pivots.dataBlock[i] : i) == j ? 1 : 0;
        }
        substitute(this->rowTable, n, column);
    }
    inverse.transpose();
    this->exchangeStorage(inverse);
    this->errorFlag = 0;
    return 1;
}

template <typename T>
int SquareMatrix<T>::solve(const Vector<T>& b, Vector<T>& x, bool pivot) const {
    const int n = this->getCols();
    if (b.length() != n) {
        return 0;
    }
    const int pivotCount = pivot ? n : 0;
    SquareMatrix factors(*this);
    Vector<int> pivots(pivotCount, 0);
    if (factors.errorFlag != 0 || pivots.length() != pivotCount || x.assign(b).errorFlag != 0) {
        return 0;
    }
    return factors.luDecompose(pivots) == 1 ? factors.luSolve(x, pivots) : 0;
}

template int SquareMatrix<int>::luDecompose(Vector<int>&);
template int SquareMatrix<double>::luDecompose(Vector<int>&);
template int SquareMatrix<int>::luSolve(Vector<int>&, const Vector<int>&) const;
template int SquareMatrix<double>::luSolve(Vector<double>&, const Vector<int>&) const;
template int SquareMatrix<int>::invert(bool);
template int SquareMatrix<double>::invert(bool);
template int SquareMatrix<int>::solve(const Vector<int>&, Vector<int>&, bool) const;
template int SquareMatrix<double>::solve(const Vector<double>&, Vector<double>&, bool) const;
