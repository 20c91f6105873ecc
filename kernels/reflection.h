#pragma once

#include "kernels/arithmetic.h"

#include <cstddef>
#include <cstdint>

namespace kernels {

// The products of which reflections of a matrix consist. Element (k, j) of the rows x cols matrix a
// is a[k * stride + j]; element k of the vector x is x[k * step]. Operands do not overlap.
namespace plain {

// x^T a: sums[j] = sum_k x_k a_kj, k ascending from a sum of 0.
template <typename T>
void columnSums(const T* x, std::ptrdiff_t step, const T* a, std::ptrdiff_t stride, int rows,
                int cols, T* sums) {
    for (int j = 0; j < cols; ++j) {
        T t = 0;
        for (int k = 0; k < rows; ++k) {
            t = sum(t, product(x[k * step], a[k * stride + j]));
        }
        sums[j] = t;
    }
}

// a y: sums[k] = sum_j a_kj y_j, j ascending from a sum of 0.
template <typename T>
void rowSums(const T* a, std::ptrdiff_t stride, int rows, int cols, const T* y, T* sums) {
    for (int k = 0; k < rows; ++k) {
        T t = 0;
        for (int j = 0; j < cols; ++j) {
            t = sum(t, product(a[k * stride + j], y[j]));
        }
        sums[k] = t;
    }
}

// a + x y^T: each a_kj becomes a_kj + x_k y_j.
template <typename T>
void addOuterProduct(const T* x, std::ptrdiff_t step, const T* y, T* a, std::ptrdiff_t stride,
                     int rows, int cols) {
    for (int k = 0; k < rows; ++k) {
        for (int j = 0; j < cols; ++j) {
            T& element = a[k * stride + j];
            element = sum(element, product(x[k * step], y[j]));
        }
    }
}

// a + x y^T, and then a z of that: what a row's reflection needs of the rows below it, which that
// of a column has not reached yet.
template <typename T>
void addOuterProductAndSumRows(const T* x, std::ptrdiff_t step, const T* y, T* a,
                               std::ptrdiff_t stride, int rows, int cols, const T* z, T* sums) {
    addOuterProduct(x, step, y, a, stride, rows, cols);
    rowSums(a, stride, rows, cols, z, sums);
}

}  // namespace plain

// Reflections by number: element k of vector i is at [k * step + i * next].
template <typename T>
struct ReflectionSequence {
    const T* x;
    std::ptrdiff_t xStep, xNext;
    const T* y;
    std::ptrdiff_t yStep, yNext;
    const T* scales;  // or null
    int first, last;  // numbers first to last - 1
};

namespace plain {

// Multiplies the columns of a by the reflections, from last - 1 down to first. With
//     f = sum_k x_ik a_k,  k = i + 1 .. rows - 1 ascending from a sum of 0,
// number i adds f y_ik to element k of a column, k > i, and element i becomes 0. With scales f is
// first divided by y_ii and multiplied by the reciprocal of scale i, and 0 + f y_ii is element i.
template <typename T>
void reflectColumns(const ReflectionSequence<T>& s, T* a, std::ptrdiff_t stride, int rows, int cols,
                    T* /*panel*/) {
    for (int i = s.last - 1; i >= s.first; --i) {
        const T* const x = s.x + i * s.xNext;
        const T* const y = s.y + i * s.yNext;
        for (int j = 0; j < cols; ++j) {
            T f = 0;
            for (int k = i + 1; k < rows; ++k) {
                f = sum(f, product(x[k * s.xStep], a[k * stride + j]));
            }
            T top = 0;
            if (s.scales != nullptr) {
                f = product(quotient(f, y[i * s.yStep]), quotient(T(1), s.scales[i]));
                top = sum(T(0), product(f, y[i * s.yStep]));
            }
            for (int k = i + 1; k < rows; ++k) {
                T& element = a[k * stride + j];
                element = sum(element, product(y[k * s.yStep], f));
            }
            a[i * stride + j] = top;
        }
    }
}

}  // namespace plain

// With rows apart in memory, each row of a few columns is a page of its own. The columns and the
// vectors are therefore copied to where they lie close together: `panel` has room for so many
// elements, or is null, and they are worked on where they are.
inline constexpr int reflectionColumns = 32;
constexpr std::int64_t reflectionPanel(std::int64_t rows, int reflections) {
    return rows * (reflectionColumns + 2 * reflections);
}

// The fast forms for double.
void columnSums(const double* x, std::ptrdiff_t step, const double* a, std::ptrdiff_t stride,
                int rows, int cols, double* sums);
void rowSums(const double* a, std::ptrdiff_t stride, int rows, int cols, const double* y,
             double* sums);
void addOuterProduct(const double* x, std::ptrdiff_t step, const double* y, double* a,
                     std::ptrdiff_t stride, int rows, int cols);
void addOuterProductAndSumRows(const double* x, std::ptrdiff_t step, const double* y, double* a,
                               std::ptrdiff_t stride, int rows, int cols, const double* z,
                               double* sums);
void reflectColumns(const ReflectionSequence<double>& s, double* a, std::ptrdiff_t stride, int rows,
                    int cols, double* panel);

// For int the plain loops are the only ones.
using plain::addOuterProduct;
using plain::addOuterProductAndSumRows;
using plain::columnSums;
using plain::reflectColumns;
using plain::rowSums;

}  // namespace kernels
