#pragma once

#include "kernels/arithmetic.h"

#include <cstddef>

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

}  // namespace plain

// The fast forms for double.
void columnSums(const double* x, std::ptrdiff_t step, const double* a, std::ptrdiff_t stride,
                int rows, int cols, double* sums);
void rowSums(const double* a, std::ptrdiff_t stride, int rows, int cols, const double* y,
             double* sums);
void addOuterProduct(const double* x, std::ptrdiff_t step, const double* y, double* a,
                     std::ptrdiff_t stride, int rows, int cols);

// For int the plain loops are the only ones.
using plain::addOuterProduct;
using plain::columnSums;
using plain::rowSums;

}  // namespace kernels
