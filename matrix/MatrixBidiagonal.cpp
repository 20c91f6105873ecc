#include "kernels/arithmetic.h"
#include "kernels/reflection.h"
#include "matrix/Matrix.h"
#include "matrix/Vector.h"

#include <algorithm>
#include <cstddef>

using kernels::difference, kernels::magnitude, kernels::negative, kernels::product,
    kernels::quotient, kernels::squareRoot, kernels::sum;

namespace {

// The reflection I + x x^T / h, which takes scale x to scale g times the first unit vector. With
// scale 0 there is none.
template <typename T>
struct Reflection {
    T scale = 0;
    T g = 0;
    T h = 0;
};

}  // namespace

// count elements of a row or column, a stride apart, become the vector x of their reflection.
// Divided by the sum of their magnitudes before they are squared, they do not overflow.
template <typename T>
static Reflection<T> makeReflection(T* x, int count, int stride) {
    T* const end = x + static_cast<std::ptrdiff_t>(count) * stride;
    Reflection<T> reflection;
    for (const T* element = x; element != end; element += stride) {
        reflection.scale = sum(reflection.scale, magnitude(*element));
    }
    if (reflection.scale == T(0)) {
        return reflection;
    }
    T squares = 0;
    for (T* element = x; element != end; element += stride) {
        *element = quotient(*element, reflection.scale);
        squares = sum(squares, product(*element, *element));
    }
    const T root = squareRoot(squares);
    reflection.g = *x < T(0) ? root : negative(root);  // of the other sign: nothing cancels in x
    reflection.h = difference(product(*x, reflection.g), squares);
    *x = difference(*x, reflection.g);
    return reflection;
}

// Column i from the diagonal down becomes its Householder vector, by which the columns right of it
// are reflected. Returns what is left of it, the diagonal element. The elements of factors from
// i + 1 on are scratch.
template <typename T>
static T reflectColumn(T* const* a, int m, int n, int i, T* factors) {
    const int l = i + 1, rows = m - i, cols = n - l;
    T* const column = a[i] + i;
    const Reflection<T> reflection = makeReflection(column, rows, n);
    if (reflection.scale == T(0)) {
        return 0;
    }
    kernels::columnSums(column, n, column + 1, n, rows, cols, factors + l);
    for (int j = l; j < n; ++j) {
        factors[j] = quotient(factors[j], reflection.h);
    }
    kernels::addOuterProduct(column, n, factors + l, column + 1, n, rows, cols);
    for (int k = i; k < m; ++k) {
        a[k][i] = product(a[k][i], reflection.scale);
    }
    return product(reflection.scale, reflection.g);
}

// Row i right of the diagonal likewise, with the rows below it. The elements of quotients from
// i + 1 on are scratch.
template <typename T>
static T reflectRow(T* const* a, int m, int n, int i, T* quotients) {
    const int l = i + 1, cols = n - l;
    T* const row = a[i] + l;
    const Reflection<T> reflection = makeReflection(row, cols, 1);
    if (reflection.scale == T(0)) {
        return 0;
    }
    for (int k = 0; k < cols; ++k) {
        quotients[l + k] = quotient(row[k], reflection.h);
    }
    constexpr int block = 16;  // rows that are still in the cache when they are updated
    T sums[block];
    for (int j = l; j < m; j += block) {
        const int rows = std::min(block, m - j);
        kernels::rowSums(a[j] + l, n, rows, cols, row, sums);
        kernels::addOuterProduct(sums, 1, quotients + l, a[j] + l, n, rows, cols);
    }
    for (int k = 0; k < cols; ++k) {
        row[k] = product(row[k], reflection.scale);
    }
    return product(reflection.scale, reflection.g);
}

template <typename T>
void Matrix<T>::bidiagonalize(Matrix& u, MatrixStore<T>& w, Vector<T>& superdiagonal,
                              T* norm) const {
    const int m = u.getRows(), n = u.getCols();
    T** a = u.rowTable;
    T* diagonal = w.dataBlock;
    T* above = superdiagonal.dataBlock;
    *norm = 0;
    T next = 0;
    for (int i = 0; i < n; ++i) {
        above[i] = next;
        diagonal[i] = i < m ? reflectColumn(a, m, n, i, diagonal) : T(0);
        next = i < m ? reflectRow(a, m, n, i, above) : T(0);
        *norm = std::max(*norm, sum(magnitude(diagonal[i]), magnitude(above[i])));
    }
}

// V from the row vectors, last to first. It grows out of its lower right corner.
template <typename T>
static void accumulateRows(const T* const* u, int n, const T* above, T* const* v) {
    for (int i = n - 1; i >= 0; --i) {
        const int l = i + 1, order = n - l;
        if (l < n && above[l] != T(0)) {
            for (int j = l; j < n; ++j) {
                // In this order: the product of the divisors could underflow.
                v[j][i] = quotient(quotient(u[i][j], u[i][l]), above[l]);
            }
            kernels::columnSums(u[i] + l, 1, v[l] + l, n, order, order, v[i] + l);
            kernels::addOuterProduct(v[l] + i, n, v[i] + l, v[l] + l, n, order, order);
        }
        for (int j = l; j < n; ++j) {
            v[i][j] = v[j][i] = 0;
        }
        v[i][i] = 1;
    }
}

// U from the column vectors, in their place, last to first. Row i right of the diagonal holds the
// factors of the columns, until it is 0 plus its own part of the sum.
template <typename T>
static void accumulateColumns(T* const* u, int m, int n, const T* diagonal) {
    for (int i = n - 1; i >= 0; --i) {
        const int l = i + 1;
        T* const factors = u[i];
        if (diagonal[i] != T(0)) {
            const T reciprocal = quotient(T(1), diagonal[i]);
            if (l < n) {
                kernels::columnSums(u[l] + i, n, u[l] + l, n, m - l, n - l, factors + l);
                for (int j = l; j < n; ++j) {
                    factors[j] = product(quotient(factors[j], u[i][i]), reciprocal);
                }
                kernels::addOuterProduct(u[l] + i, n, factors + l, u[l] + l, n, m - l, n - l);
            }
            for (int j = l; j < n; ++j) {
                u[i][j] = sum(T(0), product(factors[j], u[i][i]));
            }
            for (int k = i; k < m; ++k) {
                u[k][i] = product(u[k][i], reciprocal);
            }
        } else {
            std::fill(u[i] + l, u[i] + n, T(0));
            for (int k = i; k < m; ++k) {
                u[k][i] = 0;
            }
        }
        u[i][i] = sum(u[i][i], T(1));
    }
}

template <typename T>
void Matrix<T>::accumulateTransforms(Matrix& u, const MatrixStore<T>& w, Matrix& v,
                                     const Vector<T>& superdiagonal) const {
    const int m = u.getRows(), n = u.getCols();
    accumulateRows(u.rowTable, n, superdiagonal.dataBlock, v.rowTable);
    accumulateColumns(u.rowTable, m, n, w.dataBlock);
}

template void Matrix<int>::bidiagonalize(Matrix<int>&, MatrixStore<int>&, Vector<int>&, int*) const;
template void Matrix<double>::bidiagonalize(Matrix<double>&, MatrixStore<double>&, Vector<double>&,
                                            double*) const;
template void Matrix<int>::accumulateTransforms(Matrix<int>&, const MatrixStore<int>&, Matrix<int>&,
                                                const Vector<int>&) const;
template void Matrix<double>::accumulateTransforms(Matrix<double>&, const MatrixStore<double>&,
                                                   Matrix<double>&, const Vector<double>&) const;
