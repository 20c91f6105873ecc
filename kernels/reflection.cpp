#include "kernels/reflection.h"

#include "kernels/shuffles.h"
#include "kernels/vectors.h"

#include <algorithm>
#include <cstdint>

namespace kernels {

// result[j] += x_0 b_0j, then x_1 b_1j and so on, for `count` rows of b. The first and the last
// vector of the result, wherever they lie, overlap those between them, which are whole cache lines:
// they are computed before those, and stored after them.
template <int lanes, int count>
[[gnu::always_inline]] static inline void addRows(const double* x, std::ptrdiff_t step,
                                                  const double* b, std::ptrdiff_t stride, int cols,
                                                  double* result) {
    if (cols < lanes) {
        if constexpr (lanes > 1) {
            addRows<lanes / 2, count>(x, step, b, stride, cols, result);
        }
        return;
    }
    const int last = cols - lanes;
    Vector<lanes> start = *vectorsAt<lanes>(result), end = *vectorsAt<lanes>(result + last);
    double factors[std::size_t{count}];
#pragma GCC unroll 16
    for (int k = 0; k < count; ++k) {
        factors[k] = x[k * step];
        start += factors[k] * *vectorsAt<lanes>(b + k * stride);
        end += factors[k] * *vectorsAt<lanes>(b + k * stride + last);
    }
    const auto beyond = reinterpret_cast<std::uintptr_t>(result) / sizeof(double) % lanes;
    for (int j = lanes - static_cast<int>(beyond); j < last; j += lanes) {
        Vector<lanes> t = *vectorsAt<lanes>(result + j);
#pragma GCC unroll 16
        for (int k = 0; k < count; ++k) {
            t += factors[k] * *vectorsAt<lanes>(b + k * stride + j);
        }
        *vectorsAt<lanes>(result + j) = t;
    }
    *vectorsAt<lanes>(result) = start;
    *vectorsAt<lanes>(result + last) = end;
}

template <int lanes>
[[gnu::always_inline]] static inline void columnSumsBody(const double* x, std::ptrdiff_t step,
                                                         const double* a, std::ptrdiff_t stride,
                                                         int rows, int cols, double* sums) {
    constexpr int block = 4;
    std::fill_n(sums, cols, 0.0);
    int k = 0;
    for (; k + block <= rows; k += block) {
        addRows<lanes, block>(x + k * step, step, a + k * stride, stride, cols, sums);
    }
    for (; k < rows; ++k) {
        addRows<lanes, 1>(x + k * step, step, a + k * stride, stride, cols, sums);
    }
}
FENDRA_VARIANTS(columnSumsVariant, columnSumsBody)

void columnSums(const double* x, std::ptrdiff_t step, const double* a, std::ptrdiff_t stride,
                int rows, int cols, double* sums) {
    columnSumsVariant(x, step, a, stride, rows, cols, sums);
}

// Sums of lanes * groups rows. A square of products is transposed, so that the terms of lanes sums
// stand side by side.
template <int lanes, int groups>
[[gnu::always_inline]] static inline void rowTile(const double* a, std::ptrdiff_t stride, int cols,
                                                  const double* y, double* sums) {
    Vector<lanes> t[std::size_t{groups}] = {};
    int j = 0;
    for (; j + lanes <= cols; j += lanes) {
#pragma GCC unroll 16
        for (int g = 0; g < groups; ++g) {
            alignas(64) Vector<lanes> products[std::size_t{lanes}];
#pragma GCC unroll 8
            for (int r = 0; r < lanes; ++r) {
                products[r] =
                    *vectorsAt<lanes>(a + (g * lanes + r) * stride + j) * *vectorsAt<lanes>(y + j);
            }
            transpose<lanes>(products);
#pragma GCC unroll 8
            for (int r = 0; r < lanes; ++r) {
                t[g] += products[r];
            }
        }
    }
#pragma GCC unroll 16
    for (int g = 0; g < groups; ++g) {
        vectorsAt<lanes>(sums)[g] = t[g];
    }
    for (; j < cols; ++j) {
        for (int r = 0; r < lanes * groups; ++r) {
            sums[r] += a[r * stride + j] * y[j];
        }
    }
}

// Rows in tiles, the last of which ends with the last row and computes some sums again; of fewer
// rows than a tile has, smaller ones.
template <int lanes, int groups>
[[gnu::always_inline]] static inline void rowTiles(const double* a, std::ptrdiff_t stride, int rows,
                                                   int cols, const double* y, double* sums) {
    constexpr int height = lanes * groups;
    if (rows >= height) {
        for (int k = 0; k < rows; k += height) {
            const int first = std::min(k, rows - height);
            rowTile<lanes, groups>(a + first * stride, stride, cols, y, sums + first);
        }
    } else if constexpr (height > 2) {
        constexpr bool several = groups > 1;
        rowTiles<several ? lanes : lanes / 2, several ? groups / 2 : 1>(a, stride, rows, cols, y,
                                                                        sums);
    } else {
        plain::rowSums(a, stride, rows, cols, y, sums);
    }
}

template <int lanes>
[[gnu::always_inline]] static inline void rowSumsBody(const double* a, std::ptrdiff_t stride,
                                                      int rows, int cols, const double* y,
                                                      double* sums) {
    rowTiles<lanes, lanes == 8 ? 2 : 4>(a, stride, rows, cols, y, sums);
}
FENDRA_VARIANTS(rowSumsVariant, rowSumsBody)

void rowSums(const double* a, std::ptrdiff_t stride, int rows, int cols, const double* y,
             double* sums) {
    rowSumsVariant(a, stride, rows, cols, y, sums);
}

template <int lanes>
[[gnu::always_inline]] static inline void addOuterProductBody(const double* x, std::ptrdiff_t step,
                                                              const double* y, double* a,
                                                              std::ptrdiff_t stride, int rows,
                                                              int cols) {
    for (int k = 0; k < rows; ++k) {
        addRows<lanes, 1>(x + k * step, step, y, 0, cols, a + k * stride);
    }
}
FENDRA_VARIANTS(addOuterProductVariant, addOuterProductBody)

void addOuterProduct(const double* x, std::ptrdiff_t step, const double* y, double* a,
                     std::ptrdiff_t stride, int rows, int cols) {
    addOuterProductVariant(x, step, y, a, stride, rows, cols);
}

}  // namespace kernels
