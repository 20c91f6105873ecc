#pragma once

#include "kernels/radix2Twiddles.h"
#include "kernels/vectors.h"

#include <cstddef>

namespace kernels {

// Complex numbers in two arrays.
struct Complexes {
    double *re, *im;
    Complexes operator+(std::ptrdiff_t offset) const { return {re + offset, im + offset}; }
};

// The butterfly between rows 0 and p, with the twiddle of a run.
template <int lanes, typename Twiddle>
[[gnu::always_inline]] inline void joinTwo(Vector<lanes>* x, Vector<lanes>* y, int p, int run,
                                           const Twiddle& twiddle) {
    Vector<lanes> ur, ui;
    twiddle(run, ur, ui);
    const Vector<lanes> tr = ur * x[p] - ui * y[p];
    const Vector<lanes> ti = ui * x[p] + ur * y[p];
    x[p] = x[0] - tr;
    y[p] = y[0] - ti;
    x[0] += tr;
    y[0] += ti;
}

// The butterflies of some stages between 2^stages rows. twiddle(run, ur, ui) sets the twiddles. One
// half of the rows goes through all stages but the last before the other half starts: where three
// stages are more than the registers hold, only that half is put aside, and once.
template <int lanes, int stages, typename Twiddle>
[[gnu::always_inline]] inline void butterflies(Vector<lanes>* x, Vector<lanes>* y,
                                               const Twiddle& twiddle) {
    constexpr int half = 1 << (stages - 1);
    if constexpr (stages > 1) {
        butterflies<lanes, stages - 1>(x, y, twiddle);
        butterflies<lanes, stages - 1>(x + half, y + half, twiddle);
    }
#pragma GCC unroll 4
    for (int k = 0; k < half; ++k) {
        joinTwo<lanes>(x + k, y + k, half, half - 1 + k, twiddle);
    }
}

// Runs some stages on a vector of columns between rows that lie `row` apart, and multiplies by the
// scale if it is to. `to` is `from`, or apart from it. twiddle(run, ur, ui) sets the twiddles.
template <int lanes, int stages, bool scaled, typename Twiddle>
[[gnu::always_inline]] inline void joinRows(Complexes from, Complexes to, std::ptrdiff_t row,
                                            double scale, const Twiddle& twiddle) {
    constexpr int rows = 1 << stages;
    Vector<lanes> x[std::size_t{rows}], y[std::size_t{rows}];
#pragma GCC unroll 8
    for (int i = 0; i < rows; ++i) {
        x[i] = *vectorsAt<lanes>(from.re + i * row);
        y[i] = *vectorsAt<lanes>(from.im + i * row);
    }
    butterflies<lanes, stages>(x, y, twiddle);
#pragma GCC unroll 8
    for (int i = 0; i < rows; ++i) {
        *vectorsAt<lanes>(to.re + i * row) = scaled ? x[i] * scale : x[i];
        *vectorsAt<lanes>(to.im + i * row) = scaled ? y[i] * scale : y[i];
    }
}

// The stages from `half` on, all of which are in the table. Where rows are short, the twiddles of a
// column stay in registers for all blocks; with long ones, blocks would take turns in the caches.
template <int lanes, int stages, bool scaled>
[[gnu::always_inline]] inline void tablePass(Complexes from, Complexes to, int n, int half,
                                             double sign, double scale) {
    const std::ptrdiff_t row = half;
    const double* tableRe = twiddleTable.re + row;
    const double* tableIm = (sign == 1.0 ? twiddleTable.inverseIm : twiddleTable.forwardIm) + row;
    const auto join = [=](std::ptrdiff_t block, std::ptrdiff_t j) __attribute__((always_inline)) {
        joinRows<lanes, stages, scaled>(from + (block + j), to + (block + j), row, scale,
                                        [=](int run, Vector<lanes>& ur, Vector<lanes>& ui) {
                                            ur = *vectorsAt<lanes>(tableRe + run * row + j);
                                            ui = *vectorsAt<lanes>(tableIm + run * row + j);
                                        });
    };
    if (stages == 2 && row <= 16) {
        for (std::ptrdiff_t j = 0; j < row; j += lanes) {
            for (std::ptrdiff_t block = 0; block < n; block += row << stages) {
                join(block, j);
            }
        }
        return;
    }
    for (std::ptrdiff_t block = 0; block < n; block += row << stages) {
        for (std::ptrdiff_t j = 0; j < row; j += lanes) {
            join(block, j);
        }
    }
}

// The stages from `half` on by chains, in place.
template <int lanes, int stages, bool scaled>
[[gnu::always_inline]] inline void chainPass(Complexes a, int n, int half, double sign,
                                             double scale) {
    Chains<stages> chains(half, sign);
    const std::ptrdiff_t row = half, part = half / chains.parts, columns = chains.columns;
    for (std::ptrdiff_t piece = 0; piece < part; piece += columns) {
        advance<lanes>(chains);
        for (std::ptrdiff_t block = 0; block < n; block += row << stages) {
            for (int p = 0; p < chains.parts; ++p) {
                const Complexes at = a + (block + p * part + piece);
                const double* latestRe = chains.latestRe + p * chains.runs * columns;
                const double* latestIm = chains.latestIm + p * chains.runs * columns;
                for (std::ptrdiff_t j = 0; j < columns; j += lanes) {
                    joinRows<lanes, stages, scaled>(
                        at + j, at + j, row, scale,
                        [=](int run, Vector<lanes>& ur, Vector<lanes>& ui) {
                            ur = *vectorsAt<lanes>(latestRe + run * columns + j);
                            ui = *vectorsAt<lanes>(latestIm + run * columns + j);
                        });
                }
            }
        }
    }
}

}  // namespace kernels
