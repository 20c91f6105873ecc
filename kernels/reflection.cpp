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

// Adds a square of products, whose rows are those of the sums, column by column: transposed, the
// terms of lanes sums stand side by side.
template <int lanes>
[[gnu::always_inline]] static inline void addColumns(Vector<lanes>* products, Vector<lanes>& sums) {
    transpose<lanes>(products);
#pragma GCC unroll 8
    for (int r = 0; r < lanes; ++r) {
        sums += products[r];
    }
}

// Sums of lanes * groups rows.
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
            addColumns<lanes>(products, t[g]);
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

// The rows of a tile are updated on their way into the products of their sums.
template <int lanes, int groups>
[[gnu::always_inline]] static inline void updateTile(const double* x, std::ptrdiff_t step,
                                                     const double* y, double* a,
                                                     std::ptrdiff_t stride, int cols,
                                                     const double* z, double* sums) {
    Vector<lanes> t[std::size_t{groups}] = {};
    int j = 0;
    for (; j + lanes <= cols; j += lanes) {
        const Vector<lanes> across = *vectorsAt<lanes>(y + j), factor = *vectorsAt<lanes>(z + j);
#pragma GCC unroll 16
        for (int g = 0; g < groups; ++g) {
            alignas(64) Vector<lanes> products[std::size_t{lanes}];
#pragma GCC unroll 8
            for (int r = 0; r < lanes; ++r) {
                const std::ptrdiff_t row = g * lanes + r;
                double* const element = a + row * stride + j;
                const Vector<lanes> updated = *vectorsAt<lanes>(element) + x[row * step] * across;
                *vectorsAt<lanes>(element) = updated;
                products[r] = updated * factor;
            }
            addColumns<lanes>(products, t[g]);
        }
    }
#pragma GCC unroll 16
    for (int g = 0; g < groups; ++g) {
        vectorsAt<lanes>(sums)[g] = t[g];
    }
    for (; j < cols; ++j) {
        for (int r = 0; r < lanes * groups; ++r) {
            double& element = a[r * stride + j];
            element += x[r * step] * y[j];
            sums[r] += element * z[j];
        }
    }
}

template <int lanes>
[[gnu::always_inline]] static inline void addOuterProductAndSumRowsBody(
    const double* x, std::ptrdiff_t step, const double* y, double* a, std::ptrdiff_t stride,
    int rows, int cols, const double* z, double* sums) {
    constexpr int groups = lanes == 8 ? 2 : 4, height = lanes * groups;
    int k = 0;
    for (; k + height <= rows; k += height) {
        updateTile<lanes, groups>(x + k * step, step, y, a + k * stride, stride, cols, z, sums + k);
    }
    addOuterProductBody<lanes>(x + k * step, step, y, a + k * stride, stride, rows - k, cols);
    rowTiles<lanes, groups>(a + k * stride, stride, rows - k, cols, z, sums + k);
}
FENDRA_VARIANTS(addOuterProductAndSumRowsVariant, addOuterProductAndSumRowsBody)

void addOuterProductAndSumRows(const double* x, std::ptrdiff_t step, const double* y, double* a,
                               std::ptrdiff_t stride, int rows, int cols, const double* z,
                               double* sums) {
    addOuterProductAndSumRowsVariant(x, step, y, a, stride, rows, cols, z, sums);
}

// A strip of lanes * groups columns goes through all reflections and stays in the cache. The pass
// that adds one of them takes the sums of the next.
template <int lanes, int groups>
[[gnu::always_inline]] static inline void reflectStrip(const ReflectionSequence<double>& s,
                                                       double* a, std::ptrdiff_t stride, int rows) {
    Vector<lanes> f[std::size_t{groups}] = {};
    int i = s.last - 1;
    const double* x = s.x + i * s.xNext;
    for (int k = i + 1; k < rows; ++k) {
#pragma GCC unroll 8
        for (int g = 0; g < groups; ++g) {
            f[g] += x[k * s.xStep] * vectorsAt<lanes>(a + k * stride)[g];
        }
    }
    for (;; --i) {
        const double* const y = s.y + i * s.yNext;
        Vector<lanes> top[std::size_t{groups}] = {}, sums[std::size_t{groups}] = {};
        if (s.scales != nullptr) {
            const double pivot = y[i * s.yStep], reciprocal = 1.0 / s.scales[i];
#pragma GCC unroll 8
            for (int g = 0; g < groups; ++g) {
                f[g] = f[g] / pivot * reciprocal;
                top[g] += f[g] * pivot;
            }
        }
        const bool done = i == s.first;  // and the sums of this one once more are not needed
        x -= done ? 0 : s.xNext;
#pragma GCC unroll 8
        for (int g = 0; g < groups; ++g) {
            vectorsAt<lanes>(a + i * stride)[g] = top[g];
            sums[g] += x[i * s.xStep] * top[g];
        }
        for (int k = i + 1; k < rows; ++k) {
            const double along = x[k * s.xStep], factor = y[k * s.yStep];
#pragma GCC unroll 8
            for (int g = 0; g < groups; ++g) {
                const Vector<lanes> updated = vectorsAt<lanes>(a + k * stride)[g] + factor * f[g];
                vectorsAt<lanes>(a + k * stride)[g] = updated;
                sums[g] += along * updated;
            }
        }
        if (done) {
            return;
        }
#pragma GCC unroll 8
        for (int g = 0; g < groups; ++g) {
            f[g] = sums[g];
        }
    }
}

// Vectors first to last - 1 of a sequence, from element `first` on, one after another.
static void gatherVectors(const double* from, std::ptrdiff_t step, std::ptrdiff_t next, int first,
                          int last, int rows, double* to) {
    constexpr int block = 16;  // elements of a cache line are of several vectors
    for (int start = first; start < rows; start += block) {
        const int end = std::min(rows, start + block);
        for (int i = first; i < last; ++i, to += rows) {
            for (int k = start; k < end; ++k) {
                to[k] = from[k * step + i * next];
            }
        }
        to -= static_cast<std::ptrdiff_t>(last - first) * rows;
    }
}

// The same reflections with their vectors at `room`.
static ReflectionSequence<double> gathered(const ReflectionSequence<double>& s, int rows,
                                           double* room) {
    const std::ptrdiff_t size = std::ptrdiff_t{s.last - s.first} * rows;
    const std::ptrdiff_t beforeFirst = std::ptrdiff_t{s.first} * rows;
    ReflectionSequence<double> close = s;
    gatherVectors(s.x, s.xStep, s.xNext, s.first, s.last, rows, room);
    close.x = room - beforeFirst;
    close.xStep = close.yStep = 1;
    close.xNext = close.yNext = rows;
    const bool same = s.x == s.y && s.xStep == s.yStep && s.xNext == s.yNext;
    if (!same) {
        gatherVectors(s.y, s.yStep, s.yNext, s.first, s.last, rows, room + size);
    }
    close.y = close.x + (same ? 0 : size);
    return close;
}

template <int lanes, int groups>
[[gnu::always_inline]] static inline void copyStrip(const double* from, std::ptrdiff_t fromStride,
                                                    int first, int rows, double* to,
                                                    std::ptrdiff_t toStride) {
    for (int k = first; k < rows; ++k) {
#pragma GCC unroll 8
        for (int g = 0; g < groups; ++g) {
            vectorsAt<lanes>(to + k * toStride)[g] = vectorsAt<lanes>(from + k * fromStride)[g];
        }
    }
}

// Strips of that width, and narrower ones of what is left.
template <int lanes, int groups>
[[gnu::always_inline]] static inline void reflectStrips(const ReflectionSequence<double>& s,
                                                        double* a, std::ptrdiff_t stride, int rows,
                                                        int cols, double* panel) {
    constexpr int width = lanes * groups;
    static_assert(width <= reflectionColumns);
    int j = 0;
    for (; j + width <= cols; j += width) {
        if (panel == nullptr) {
            reflectStrip<lanes, groups>(s, a + j, stride, rows);
        } else {
            copyStrip<lanes, groups>(a + j, stride, s.last, rows, panel, width);
            reflectStrip<lanes, groups>(s, panel, width, rows);
            copyStrip<lanes, groups>(panel, width, s.first, rows, a + j, stride);
        }
    }
    if constexpr (width > 1) {
        constexpr bool several = groups > 1;
        reflectStrips<several ? lanes : lanes / 2, several ? groups / 2 : 1>(s, a + j, stride, rows,
                                                                             cols - j, panel);
    }
}

template <int lanes>
[[gnu::always_inline]] static inline void reflectColumnsBody(const ReflectionSequence<double>* s,
                                                             double* a, std::ptrdiff_t stride,
                                                             int rows, int cols, double* panel) {
    reflectStrips<lanes, 4>(*s, a, stride, rows, cols, panel);
}
FENDRA_VARIANTS(reflectColumnsVariant, reflectColumnsBody)

void reflectColumns(const ReflectionSequence<double>& s, double* a, std::ptrdiff_t stride, int rows,
                    int cols, double* panel) {
    if (s.first >= s.last) {
        return;
    }
    ReflectionSequence<double> close = s;
    if (panel != nullptr) {
        close = gathered(s, rows, panel + std::ptrdiff_t{reflectionColumns} * rows);
    }
    reflectColumnsVariant(&close, a, stride, rows, cols, panel);
}

}  // namespace kernels
