#pragma once

#include "kernels/Block.h"
#include "kernels/vectors.h"

#include <algorithm>
#include <cstddef>

namespace kernels {

// The innermost part of a product of matrices: a tile of c, rows x vectors, stays in registers
// while k runs. With 8 x 3 vectors a term takes 3 loads of b and 8 of a for 24 products and 24
// sums, with 6 x 2 vectors 2 and 6 for 12 and 12; one register more holds the element of a, and one
// a product.

#if defined(__aarch64__)
template <int lanes>
static constexpr bool hasManyRegisters = true;
#else
template <int lanes>
static constexpr bool hasManyRegisters = lanes == 8;  // 32, elsewhere 16
#endif
template <int lanes>
static constexpr int tileRows = hasManyRegisters<lanes> ? 8 : 6;
template <int lanes>
static constexpr int tileVectors = hasManyRegisters<lanes> ? 3 : 2;
template <int lanes>
static constexpr int tileWidth = tileVectors<lanes>* lanes;

enum class Sign { plus, minus };

// Where a tile finds its elements of a: in their matrix, or copied, the rows of a term together.
struct RowsInPlace {
    Block<const double> a;
    [[nodiscard]] double at(int i, int k) const { return a.row(i)[k]; }
};
template <int rows>
struct RowsCopied {
    const double* elements;
    [[nodiscard]] double at(int i, int k) const { return elements[std::ptrdiff_t{k} * rows + i]; }
};

// The sums of a tile of c take the products of `depth` terms; terms of b lie vectors * lanes apart.
template <int lanes, Sign sign, int rows, int vectors, typename Rows>
[[gnu::always_inline]] inline void addTerms(const Rows& a, const double* b, int depth,
                                            Block<double> c) {
    Vector<lanes> sums[std::size_t{rows}][std::size_t{vectors}];
#pragma GCC unroll 16
    for (int i = 0; i < rows; ++i) {
#pragma GCC unroll 16
        for (int j = 0; j < vectors; ++j) {
            sums[i][j] = vectorsAt<lanes>(c.row(i))[j];
        }
    }
#pragma GCC unroll 1
    for (int k = 0; k < depth; ++k) {
        Vector<lanes> terms[std::size_t{vectors}];
#pragma GCC unroll 16
        for (int j = 0; j < vectors; ++j) {
            terms[j] = vectorsAt<lanes>(b)[k * vectors + j];
        }
#pragma GCC unroll 16
        for (int i = 0; i < rows; ++i) {
#pragma GCC unroll 16
            for (int j = 0; j < vectors; ++j) {
                if constexpr (sign == Sign::plus) {
                    sums[i][j] += a.at(i, k) * terms[j];
                } else {
                    sums[i][j] -= a.at(i, k) * terms[j];
                }
            }
        }
    }
#pragma GCC unroll 16
    for (int i = 0; i < rows; ++i) {
#pragma GCC unroll 16
        for (int j = 0; j < vectors; ++j) {
            vectorsAt<lanes>(c.row(i))[j] = sums[i][j];
        }
    }
}

// The same for a tile that may reach beyond c, of which it has count rows and cols columns: what
// reaches beyond is computed in a copy.
template <int lanes, Sign sign, int rows, int vectors, typename Rows>
[[gnu::always_inline]] inline void addTile(const Rows& a, const double* b, int depth, int count,
                                           int cols, Block<double> c) {
    constexpr int width = vectors * lanes;
    if (count >= rows && cols >= width) {
        addTerms<lanes, sign, rows, vectors>(a, b, depth, c);
        return;
    }
    alignas(64) double elements[std::size_t{rows} * width] = {};
    const Block<double> copy{elements, width};
    const int copiedRows = std::min(rows, count), copiedCols = std::min(width, cols);
    for (int i = 0; i < copiedRows; ++i) {
        std::copy_n(c.row(i), copiedCols, copy.row(i));
    }
    addTerms<lanes, sign, rows, vectors>(a, b, depth, copy);
    for (int i = 0; i < copiedRows; ++i) {
        std::copy_n(copy.row(i), copiedCols, c.row(i));
    }
}

// Copies of what tiles work on, without gaps, and with zeros where they reach beyond the matrix: of
// b up to vectors * lanes columns, of a up to `rows` rows.
template <int lanes, int vectors>
[[gnu::always_inline]] inline void copyStrip(Block<const double> b, int depth, int cols,
                                             double* copy) {
    constexpr int width = vectors * lanes;
    for (int k = 0; k < depth; ++k, copy += width) {
        if (cols >= width) {
#pragma GCC unroll 16
            for (int j = 0; j < vectors; ++j) {
                vectorsAt<lanes>(copy)[j] = vectorsAt<lanes>(b.row(k))[j];
            }
        } else {
            std::fill(std::copy_n(b.row(k), cols, copy), copy + width, 0.0);
        }
    }
}
template <int rows>
[[gnu::always_inline]] inline void copyRows(Block<const double> a, int count, int depth,
                                            double* copy) {
    for (int k = 0; k < depth; ++k, copy += rows) {
        for (int i = 0; i < rows; ++i) {
            copy[i] = i < count ? a.row(i)[k] : 0.0;
        }
    }
}

}  // namespace kernels
