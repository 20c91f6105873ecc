#include "kernels/arithmetic.h"
#include "matrix/Matrix.h"
#include "matrix/Vector.h"

#include <algorithm>

// The reflection I + x x^T / h, which takes scale x to scale g times the first unit vector. With
// scale 0 there is none.
template <typename T>
struct Reflection {
    T scale = 0;
    T g = 0;
    T h = 0;
};

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
// are reflected. Returns what is left of it, the diagonal element.
template <typename T>
static T reflectColumn(T* const* a, int m, int n, int i) {
    const Reflection<T> reflection = makeReflection(a[i] + i, m - i, n);
    if (reflection.scale == T(0)) {
        return 0;
    }
    for (int j = i + 1; j < n; ++j) {
        T t = 0;
        for (int k = i; k < m; ++k) {
            t = sum(t, product(a[k][i], a[k][j]));
        }
        t = quotient(t, reflection.h);
        for (int k = i; k < m; ++k) {
            a[k][j] = sum(a[k][j], product(t, a[k][i]));
        }
    }
    for (int k = i; k < m; ++k) {
        a[k][i] = product(a[k][i], reflection.scale);
    }
    return product(reflection.scale, reflection.g);
}

// Row i right of the diagonal likewise, with the rows below it. The elements of quotients from
// i + 1 on are scratch.
template <typename T>
static T reflectRow(T* const* a, int m, int n, int i, T* quotients) {
    T* const row = a[i];
    const int l = i + 1;
    const Reflection<T> reflection = makeReflection(row + l, n - l, 1);
    if (reflection.scale == T(0)) {
        return 0;
    }
    for (int k = l; k < n; ++k) {
        quotients[k] = quotient(row[k], reflection.h);
    }
    for (int j = l; j < m; ++j) {
        T t = 0;
        for (int k = l; k < n; ++k) {
            t = sum(t, product(a[j][k], row[k]));
        }
        for (int k = l; k < n; ++k) {
            a[j][k] = sum(a[j][k], product(t, quotients[k]));
        }
    }
    for (int k = l; k < n; ++k) {
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
        diagonal[i] = i < m ? reflectColumn(a, m, n, i) : T(0);
        next = i < m ? reflectRow(a, m, n, i, above) : T(0);
        *norm = std::max(*norm, sum(magnitude(diagonal[i]), magnitude(above[i])));
    }
}

// V from the row vectors, last to first. It grows out of its lower right corner.
template <typename T>
static void accumulateRows(const T* const* u, int n, const T* above, T* const* v) {
    for (int i = n - 1; i >= 0; --i) {
        const int l = i + 1;
        if (l < n && above[l] != T(0)) {
            for (int j = l; j < n; ++j) {
                // In this order: the product of the divisors could underflow.
                v[j][i] = quotient(quotient(u[i][j], u[i][l]), above[l]);
            }
            for (int j = l; j < n; ++j) {
                T t = 0;
                for (int k = l; k < n; ++k) {
                    t = sum(t, product(u[i][k], v[k][j]));
                }
                for (int k = l; k < n; ++k) {
                    v[k][j] = sum(v[k][j], product(t, v[k][i]));
                }
            }
        }
        for (int j = l; j < n; ++j) {
            v[i][j] = v[j][i] = 0;
        }
        v[i][i] = 1;
    }
}

// U from the column vectors, in their place, last to first.
template <typename T>
static void accumulateColumns(T* const* u, int m, int n, const T* diagonal) {
    for (int i = n - 1; i >= 0; --i) {
        const int l = i + 1;
        std::fill(u[i] + l, u[i] + n, T(0));
        if (diagonal[i] != T(0)) {
            const T reciprocal = quotient(T(1), diagonal[i]);
            for (int j = l; j < n; ++j) {
                T t = 0;
                for (int k = l; k < m; ++k) {
                    t = sum(t, product(u[k][i], u[k][j]));
                }
                const T f = product(quotient(t, u[i][i]), reciprocal);
                for (int k = i; k < m; ++k) {
                    u[k][j] = sum(u[k][j], product(f, u[k][i]));
                }
            }
            for (int k = i; k < m; ++k) {
                u[k][i] = product(u[k][i], reciprocal);
            }
        } else {
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
