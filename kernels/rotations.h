#pragma once

#include "kernels/arithmetic.h"

#include <cstddef>

namespace kernels {

// Takes a pair (x, y) to (x c + y s, y c - x s).
template <typename T>
struct PlaneRotation {
    T c;
    T s;
};

// Rotations of pairs of columns, one after another: number t is of the columns p + t and q + t. In
// a run of more than one each shares a column with the one before it: q is p + 1.
struct RotationRun {
    int p;
    int q;
    int count;
};

namespace plain {

// Rotates the pairs of elements of x and y, a step apart, from the first to the last. x may be y.
template <typename T>
void rotateRows(T* x, T* y, int length, PlaneRotation<T> rotation, std::ptrdiff_t step = 1) {
    const auto [c, s] = rotation;
    for (std::ptrdiff_t j = 0; j < length * step; j += step) {
        const T left = x[j], right = y[j];
        x[j] = sum(product(left, c), product(right, s));
        y[j] = difference(product(right, c), product(left, s));
    }
}

// Applies runs to the columns of a, rows x cols, whose rows are adjacent; the rotations of a run
// follow those of the run before it.
template <typename T>
void rotateColumns(T* a, int rows, int cols, const RotationRun* runs, int runCount,
                   const PlaneRotation<T>* rotations, T* /*panel*/) {
    for (const RotationRun* run = runs; run < runs + runCount; ++run) {
        for (int t = 0; t < run->count; ++t) {
            rotateRows(a + run->p + t, a + run->q + t, rows, *rotations++, cols);
        }
    }
}

}  // namespace plain

// Columns are rotated in panels of this many rows; `panel` has room for one and for panelMargin
// elements more.
inline constexpr int panelRows = 16, panelMargin = 8;

// The fast forms for double.
void rotateRows(double* x, double* y, int length, PlaneRotation<double> rotation);
void rotateColumns(double* a, int rows, int cols, const RotationRun* runs, int runCount,
                   const PlaneRotation<double>* rotations, double* panel);

// For int the plain loops are the only ones.
using plain::rotateColumns;
using plain::rotateRows;

}  // namespace kernels
