#include "kernels/arithmetic.h"
#include "kernels/reflection.h"
#include "matrix/Matrix.h"
#include "matrix/Vector.h"
#include "matrix/newArray.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

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

// Column i from the diagonal down becomes its Householder vector, by which row i is reflected; what
// the rows below it take from that are `factors`, from i + 1 on, times the vector.
template <typename T>
static Reflection<T> reflectColumn(T* const* a, int m, int n, int i, T* factors) {
    const int l = i + 1, rows = m - i, cols = n - l;
    T* const column = a[i] + i;
    const Reflection<T> reflection = makeReflection(column, rows, n);
    if (reflection.scale != T(0)) {
        kernels::columnSums(column, n, column + 1, n, rows, cols, factors + l);
        for (int j = l; j < n; ++j) {
            factors[j] = quotient(factors[j], reflection.h);
        }
        kernels::addOuterProduct(column, n, factors + l, column + 1, n, 1, cols);
    }
    return reflection;
}

// Row i right of the diagonal likewise, and then the rows below it, by the column's reflection
// first: they are read and written once for both. The elements of quotients from i + 1 on are
// scratch.
template <typename T>
static Reflection<T> reflectRow(T* const* a, int m, int n, int i, bool columnReflected,
                                const T* factors, T* quotients) {
    const int l = i + 1, cols = n - l;
    T* const row = a[i] + l;
    const Reflection<T> reflection = makeReflection(row, cols, 1);
    if (reflection.scale == T(0)) {
        if (columnReflected && l < m) {
            kernels::addOuterProduct(a[l] + i, n, factors + l, a[l] + l, n, m - l, cols);
        }
        return reflection;
    }
    for (int k = 0; k < cols; ++k) {
        quotients[l + k] = quotient(row[k], reflection.h);
    }
    constexpr int block = 16;  // rows that are still in the cache when they are updated
    T sums[block];
    for (int j = l; j < m; j += block) {
        const int rows = std::min(block, m - j);
        if (columnReflected) {
            kernels::addOuterProductAndSumRows(a[j] + i, n, factors + l, a[j] + l, n, rows, cols,
                                               row, sums);
        } else {
            kernels::rowSums(a[j] + l, n, rows, cols, row, sums);
        }
        kernels::addOuterProduct(sums, 1, quotients + l, a[j] + l, n, rows, cols);
    }
    return reflection;
}

// The vector is stored with its scale. Returns what the reflection leaves: the element of the
// bidiagonal form.
template <typename T>
static T finish(const Reflection<T>& reflection, T* x, int count, int stride) {
    if (reflection.scale == T(0)) {
        return 0;
    }
    T* const end = x + static_cast<std::ptrdiff_t>(count) * stride;
    for (T* element = x; element != end; element += stride) {
        *element = product(*element, reflection.scale);
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
        diagonal[i] = next = 0;
        if (i < m) {
            const Reflection<T> column = reflectColumn(a, m, n, i, diagonal);
            const Reflection<T> row = reflectRow(a, m, n, i, column.scale != T(0), diagonal, above);
            diagonal[i] = finish(column, a[i] + i, m - i, n);
            next = finish(row, a[i] + i + 1, n - i - 1, 1);
        }
        *norm = std::max(*norm, sum(magnitude(diagonal[i]), magnitude(above[i])));
    }
}

// Columns take the reflections of a block of columns left of them together: those right of the
// block all of its reflections, and those within it in the same way from smaller blocks. Number i
// of a block of one column is applied by itself.
static constexpr int reflectionBlock = 64, smallBlock = 16;

// Columns `from` to end - 1 take the reflections of s. One of scale 0 is none, and leaves zeros in
// its row.
template <typename T>
static void reflectColumnsRight(kernels::ReflectionSequence<T> s, const T* scales, T* const* a,
                                int rows, int stride, int from, int end, T* panel) {
    const int first = s.first;
    for (int last = s.last; from < end && last > first; last = s.first) {
        s.last = s.first = last;
        while (s.first > first && scales[s.first - 1] != T(0)) {
            --s.first;
        }
        if (s.first < last) {
            kernels::reflectColumns(s, a[0] + from, stride, rows, end - from, panel);
        } else {
            --s.first;
            std::fill(a[s.first] + from, a[s.first] + end, T(0));
        }
    }
}

// Calls right(first, last, end), for columns last to end - 1 to take reflections first to last - 1,
// and own(i, last), for column i to take its final values and for those right of it up to last - 1
// to take its reflection, in an order in which all take them from the last to the first, and none
// has lost its vector before.
template <typename Right, typename Own>
static void inBlocks(int n, const Right& right, const Own& own) {
    for (int end = n; end > 0; end -= std::min(end, reflectionBlock)) {
        const int first = std::max(0, end - reflectionBlock);
        right(first, end, n);
        for (int blockEnd = end; blockEnd > first;) {
            const int blockStart = std::max(first, blockEnd - smallBlock);
            right(blockStart, blockEnd, end);
            for (int i = blockEnd - 1; i >= blockStart; --i) {
                own(i, blockEnd);
            }
            blockEnd = blockStart;
        }
    }
}

// V from the row vectors, last to first. It grows out of its lower right corner. Number i has the
// divisor above[i + 1], and its second vector waits in column i.
template <typename T>
static void accumulateRows(const T* const* u, int n, const T* above, T* const* v, T* panel) {
    for (int i = 0; i + 1 < n; ++i) {
        for (int j = i + 1; above[i + 1] != T(0) && j < n; ++j) {
            // In this order: the product of the divisors could underflow.
            v[j][i] = quotient(quotient(u[i][j], u[i][i + 1]), above[i + 1]);
        }
    }
    const auto right = [=](int first, int last, int end) {
        reflectColumnsRight<T>({u[0], 1, n, v[0], n, 1, nullptr, first, last}, above + 1, v, n, n,
                               last, end, panel);
    };
    const auto own = [=](int i, int last) {
        const int l = i + 1, order = n - l, cols = last - l;
        if (cols > 0 && above[l] != T(0)) {
            kernels::columnSums(u[i] + l, 1, v[l] + l, n, order, cols, v[i] + l);
            kernels::addOuterProduct(v[l] + i, n, v[i] + l, v[l] + l, n, order, cols);
        }
        std::fill_n(v[i] + l, cols, T(0));
        for (int j = l; j < n; ++j) {
            v[j][i] = 0;
        }
        v[i][i] = 1;
    };
    inBlocks(n, right, own);
}

// Column i of U from its vector, and columns i + 1 to last - 1 by its reflection. Row i right of
// the diagonal holds the factors of the columns, until it is 0 plus its own part of the sum.
template <typename T>
static void accumulateColumn(T* const* u, int m, int n, int i, int last, T diagonal) {
    const int l = i + 1, cols = last - l;
    T* const factors = u[i];
    if (diagonal == T(0)) {
        std::fill_n(factors + l, cols, T(0));
        for (int k = i; k < m; ++k) {
            u[k][i] = 0;
        }
        return;
    }
    const T reciprocal = quotient(T(1), diagonal);
    if (cols > 0) {
        kernels::columnSums(u[l] + i, n, u[l] + l, n, m - l, cols, factors + l);
        for (int j = l; j < last; ++j) {
            factors[j] = product(quotient(factors[j], u[i][i]), reciprocal);
        }
        kernels::addOuterProduct(u[l] + i, n, factors + l, u[l] + l, n, m - l, cols);
    }
    for (int j = l; j < last; ++j) {
        u[i][j] = sum(T(0), product(factors[j], u[i][i]));
    }
    for (int k = i; k < m; ++k) {
        u[k][i] = product(u[k][i], reciprocal);
    }
}

// U from the column vectors, in their place, last to first.
template <typename T>
static void accumulateColumns(T* const* u, int m, int n, const T* diagonal, T* panel) {
    const auto right = [=](int first, int last, int end) {
        reflectColumnsRight<T>({u[0], n, 1, u[0], n, 1, diagonal, first, last}, diagonal, u, m, n,
                               last, end, panel);
    };
    const auto own = [=](int i, int last) {
        accumulateColumn(u, m, n, i, last, diagonal[i]);
        u[i][i] = sum(u[i][i], T(1));
    };
    inBlocks(n, right, own);
}

template <typename T>
void Matrix<T>::accumulateTransforms(Matrix& u, const MatrixStore<T>& w, Matrix& v,
                                     const Vector<T>& superdiagonal) const {
    const int m = u.getRows(), n = u.getCols();
    // Blocks are copied into a panel; without memory for it they take longer, where they are.
    const std::int64_t size = kernels::reflectionPanel(std::max(m, n), reflectionBlock);
    const auto panel = n > smallBlock ? newArray<T>(size) : nullptr;
    accumulateRows(u.rowTable, n, superdiagonal.dataBlock, v.rowTable, panel.get());
    accumulateColumns(u.rowTable, m, n, w.dataBlock, panel.get());
}

template void Matrix<int>::bidiagonalize(Matrix<int>&, MatrixStore<int>&, Vector<int>&, int*) const;
template void Matrix<double>::bidiagonalize(Matrix<double>&, MatrixStore<double>&, Vector<double>&,
                                            double*) const;
template void Matrix<int>::accumulateTransforms(Matrix<int>&, const MatrixStore<int>&, Matrix<int>&,
                                                const Vector<int>&) const;
template void Matrix<double>::accumulateTransforms(Matrix<double>&, const MatrixStore<double>&,
                                                   Matrix<double>&, const Vector<double>&) const;
