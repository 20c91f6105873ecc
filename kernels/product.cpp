#include "kernels/product.h"

#include "kernels/WorkWatch.h"
#include "kernels/vectors.h"

#include <algorithm>
#include <cstddef>

namespace kernels {

// A tile of c, rows x vectors, stays in registers while k runs: with 8 x 3 vectors of AVX-512 a
// term takes 3 loads of b and 8 of a for 24 products and 24 sums, where two of each kind are done a
// cycle. A panel of b, `blockDepth` terms of a tile's width, is copied to the stack (37 kB) and
// meets `blockRows` rows of a, which stay in the second cache (196 kB) from panel to panel. Between
// blocks of terms the sums wait in c.
static constexpr int blockDepth = 192, blockRows = 128;

// For 32 registers, or 16.
template <int lanes>
static constexpr int tileRows = lanes == 8 ? 8 : 4;
template <int lanes>
static constexpr int tileVectors = lanes == 8 ? 3 : 2;

namespace {

enum class Sign { plus, minus };

template <int lanes>
struct Panel {
    alignas(64) double terms[std::size_t{blockDepth} * tileVectors<lanes> * lanes];
};

}  // namespace

// The sums of a tile of c take the products of `depth` terms.
template <int lanes, Sign sign, int rows, int vectors>
[[gnu::always_inline]] static inline void addTerms(Block<const double> a, const double* terms,
                                                   int depth, Block<double> c) {
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
        Vector<lanes> b[std::size_t{vectors}];
#pragma GCC unroll 16
        for (int j = 0; j < vectors; ++j) {
            b[j] = vectorsAt<lanes>(terms)[k * vectors + j];
        }
#pragma GCC unroll 16
        for (int i = 0; i < rows; ++i) {
#pragma GCC unroll 16
            for (int j = 0; j < vectors; ++j) {
                if constexpr (sign == Sign::plus) {
                    sums[i][j] += a.row(i)[k] * b[j];
                } else {
                    sums[i][j] -= a.row(i)[k] * b[j];
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

// The same for any number of rows.
template <int lanes, Sign sign, int rows, int vectors>
[[gnu::always_inline]] static inline void addTermsToRows(Block<const double> a, const double* terms,
                                                         int depth, int count, Block<double> c) {
    int i = 0;
    for (; i + rows <= count; i += rows) {
        addTerms<lanes, sign, rows, vectors>(a.from(i, 0), terms, depth, c.from(i, 0));
    }
    if constexpr (rows > 1) {
        addTermsToRows<lanes, sign, rows / 2, vectors>(a.from(i, 0), terms, depth, count - i,
                                                       c.from(i, 0));
    }
}

// The same for vectors * lanes columns, with the panel still to be copied.
template <int lanes, Sign sign, int vectors>
[[gnu::always_inline]] static inline void addStrip(Panel<lanes>& panel, Block<const double> a,
                                                   Block<const double> b, int rows, int depth,
                                                   Block<double> c) {
    for (int k = 0; k < depth; ++k) {
#pragma GCC unroll 16
        for (int j = 0; j < vectors; ++j) {
            vectorsAt<lanes>(panel.terms)[k * vectors + j] = vectorsAt<lanes>(b.row(k))[j];
        }
    }
    addTermsToRows<lanes, sign, tileRows<lanes>, vectors>(a, panel.terms, depth, rows, c);
}

// The same for fewer columns than a vector has lanes. The lanes beyond hold unused sums.
template <int lanes, Sign sign>
[[gnu::always_inline]] static inline void addNarrowStrip(Panel<lanes>& panel, Block<const double> a,
                                                         Block<const double> b, int rows, int depth,
                                                         int cols, Block<double> c) {
    double sums[std::size_t{blockRows} * lanes] = {};
    const Block<double> terms{panel.terms, lanes}, padded{sums, lanes};
    std::fill(terms.row(0), terms.row(depth), 0.0);
    for (int k = 0; k < depth; ++k) {
        std::copy_n(b.row(k), cols, terms.row(k));
    }
    for (int i = 0; i < rows; ++i) {
        std::copy_n(c.row(i), cols, padded.row(i));
    }
    addTermsToRows<lanes, sign, tileRows<lanes>, 1>(a, panel.terms, depth, rows, padded);
    for (int i = 0; i < rows; ++i) {
        std::copy_n(padded.row(i), cols, c.row(i));
    }
}

// The same for all columns.
template <int lanes, Sign sign, int vectors = tileVectors<lanes>>
[[gnu::always_inline]] static inline void addStrips(Panel<lanes>& panel, Block<const double> a,
                                                    Block<const double> b, int rows, int depth,
                                                    int cols, Block<double> c) {
    constexpr int width = vectors * lanes;
    for (; cols >= width; cols -= width, b = b.from(0, width), c = c.from(0, width)) {
        addStrip<lanes, sign, vectors>(panel, a, b, rows, depth, c);
    }
    if constexpr (vectors > 1) {
        addStrips<lanes, sign, vectors - 1>(panel, a, b, rows, depth, cols, c);
    } else if (cols > 0) {
        addNarrowStrip<lanes, sign>(panel, a, b, rows, depth, cols, c);
    }
}

template <int lanes, Sign sign>
[[gnu::always_inline]] static inline void addBlocks(Block<const double> a, Block<const double> b,
                                                    int rows, int depth, int cols,
                                                    Block<double> c) {
    Panel<lanes> panel;
    WorkCount work(static_cast<double>(rows) * depth * cols);
    for (int k = 0; k < depth; k += blockDepth) {
        const int terms = std::min(blockDepth, depth - k);
        for (int i = 0; i < rows; i += blockRows) {
            const int count = std::min(blockRows, rows - i);
            addStrips<lanes, sign>(panel, a.from(i, k), b.from(k, 0), count, terms, cols,
                                   c.from(i, 0));
            work.add(static_cast<double>(count) * terms * cols);
        }
    }
}

template <int lanes>
[[gnu::always_inline]] static inline void addProduct(Block<const double> a, Block<const double> b,
                                                     int rows, int depth, int cols,
                                                     Block<double> c) {
    addBlocks<lanes, Sign::plus>(a, b, rows, depth, cols, c);
}

template <int lanes>
[[gnu::always_inline]] static inline void subtract(Block<const double> a, Block<const double> b,
                                                   int rows, int depth, int cols, Block<double> c) {
    addBlocks<lanes, Sign::minus>(a, b, rows, depth, cols, c);
}

FENDRA_VARIANTS(addProductVariant, addProduct)
FENDRA_VARIANTS(subtractVariant, subtract)

void multiply(Block<const double> a, Block<const double> b, int rows, int depth, int cols,
              Block<double> c) {
    for (int i = 0; i < rows; ++i) {
        std::fill_n(c.row(i), cols, 0.0);
    }
    addProductVariant(a, b, rows, depth, cols, c);
}

void subtractProduct(Block<const double> a, Block<const double> b, int rows, int depth, int cols,
                     Block<double> c) {
    subtractVariant(a, b, rows, depth, cols, c);
}

}  // namespace kernels
