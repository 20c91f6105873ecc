#include "kernels/rotations.h"

#include "kernels/shuffles.h"
#include "kernels/vectors.h"

#include <algorithm>
#include <cstdint>

namespace kernels {

// The last vector overlaps the one before it: it is loaded before that is stored.
template <int lanes>
[[gnu::always_inline]] static inline void rotateVectors(double* x, double* y, int length, double c,
                                                        double s) {
    if (length >= lanes) {
        const int last = length - lanes;
        const Vector<lanes> endX = *vectorsAt<lanes>(x + last), endY = *vectorsAt<lanes>(y + last);
        for (int j = 0; j < last; j += lanes) {
            const Vector<lanes> left = *vectorsAt<lanes>(x + j), right = *vectorsAt<lanes>(y + j);
            *vectorsAt<lanes>(x + j) = left * c + right * s;
            *vectorsAt<lanes>(y + j) = right * c - left * s;
        }
        *vectorsAt<lanes>(x + last) = endX * c + endY * s;
        *vectorsAt<lanes>(y + last) = endY * c - endX * s;
    } else if constexpr (lanes > 1) {
        rotateVectors<lanes / 2>(x, y, length, c, s);
    }
}
FENDRA_VARIANTS(rotateRowsVariant, rotateVectors)

void rotateRows(double* x, double* y, int length, PlaneRotation<double> rotation) {
    rotateRowsVariant(x, y, length, rotation.c, rotation.s);
}

// Copies the `lanes` by `lanes` elements at `from`, transposed.
template <int lanes>
[[gnu::always_inline]] static inline void copyTransposed(const double* from,
                                                         std::ptrdiff_t fromStride, double* to,
                                                         std::ptrdiff_t toStride) {
    alignas(64) Vector<lanes> square[std::size_t{lanes}];
#pragma GCC unroll 8
    for (int r = 0; r < lanes; ++r) {
        square[r] = *vectorsAt<lanes>(from + r * fromStride);
    }
    transpose<lanes>(square);
#pragma GCC unroll 8
    for (int r = 0; r < lanes; ++r) {
        *vectorsAt<lanes>(to + r * toStride) = square[r];
    }
}

namespace {

// Rows of a, lanes * groups of them, as a panel: its columns are adjacent and stand one after
// another, and a rotation is of vectors of rows.
template <int lanes, int groups>
struct RotationPanel {
    static constexpr std::ptrdiff_t height = std::ptrdiff_t{lanes} * groups;
    double* column;

    // count rows of a; in their place, where there are less than height, zeros.
    [[gnu::always_inline]] inline void load(const double* a, int count, int cols) const {
        int j = 0;
        for (; count == height && j + lanes <= cols; j += lanes) {
            for (std::ptrdiff_t first = 0; first < height; first += lanes) {
                copyTransposed<lanes>(a + first * cols + j, cols, column + j * height + first,
                                      height);
            }
        }
        for (; j < cols; ++j) {
            for (int r = 0; r < height; ++r) {
                column[j * height + r] = r < count ? a[std::ptrdiff_t{r} * cols + j] : 0.0;
            }
        }
    }

    [[gnu::always_inline]] inline void store(double* a, int count, int cols) const {
        int j = 0;
        for (; count == height && j + lanes <= cols; j += lanes) {
            for (std::ptrdiff_t first = 0; first < height; first += lanes) {
                copyTransposed<lanes>(column + j * height + first, height, a + first * cols + j,
                                      cols);
            }
        }
        for (; j < cols; ++j) {
            for (int r = 0; r < count; ++r) {
                a[std::ptrdiff_t{r} * cols + j] = column[j * height + r];
            }
        }
    }

    // The column that a rotation shares with the next one stays in registers.
    [[gnu::always_inline]] inline void rotate(RotationRun run,
                                              const PlaneRotation<double>* rotations) const {
        double* p = column + run.p * height;
        double* q = column + run.q * height;
        Vector<lanes> x[std::size_t{groups}];
#pragma GCC unroll 16
        for (int g = 0; g < groups; ++g) {
            x[g] = vectorsAt<lanes>(p)[g];
        }
        for (int t = 0; t < run.count; ++t) {
            const auto [c, s] = rotations[t];
#pragma GCC unroll 16
            for (int g = 0; g < groups; ++g) {
                const Vector<lanes> y = vectorsAt<lanes>(q + t * height)[g];
                vectorsAt<lanes>(p + t * height)[g] = x[g] * c + y * s;
                x[g] = y * c - x[g] * s;
            }
        }
#pragma GCC unroll 16
        for (int g = 0; g < groups; ++g) {
            vectorsAt<lanes>(q + (run.count - 1) * height)[g] = x[g];
        }
    }
};

}  // namespace

// A rotation depends on the one before it, by a product and a difference of six to eight cycles:
// four vectors of rows side by side fill them. Rows that are left over make smaller panels.
template <int lanes, int groups = 4>
[[gnu::always_inline]] static inline void rotatePanels(double* a, int rows, int cols,
                                                       const RotationRun* runs, int runCount,
                                                       const PlaneRotation<double>* rotations,
                                                       double* column) {
    const RotationPanel<lanes, groups> panel{column};
    constexpr int height = lanes * groups;
    while (rows >= height || (groups == 1 && rows > 0)) {
        const int count = std::min(rows, height);
        panel.load(a, count, cols);
        const PlaneRotation<double>* next = rotations;
        for (const RotationRun* run = runs; run < runs + runCount; ++run) {
            panel.rotate(*run, next);
            next += run->count;
        }
        panel.store(a, count, cols);
        a += std::ptrdiff_t{count} * cols;
        rows -= count;
    }
    if constexpr (groups > 1) {
        rotatePanels<lanes, groups / 2>(a, rows, cols, runs, runCount, rotations, column);
    }
}

template <int lanes>
[[gnu::always_inline]] static inline void rotateColumnsBody(double* a, int rows, int cols,
                                                            const RotationRun* runs, int runCount,
                                                            const PlaneRotation<double>* rotations,
                                                            double* panel) {
    static_assert(4 * lanes <= panelRows);
    rotatePanels<lanes>(a, rows, cols, runs, runCount, rotations, panel);
}
FENDRA_VARIANTS(rotateColumnsVariant, rotateColumnsBody)

void rotateColumns(double* a, int rows, int cols, const RotationRun* runs, int runCount,
                   const PlaneRotation<double>* rotations, double* panel) {
    // Its columns are whole cache lines.
    const auto beyond = reinterpret_cast<std::uintptr_t>(panel) / sizeof(double) % panelMargin;
    rotateColumnsVariant(a, rows, cols, runs, runCount, rotations,
                         panel + (panelMargin - beyond) % panelMargin);
}

}  // namespace kernels
