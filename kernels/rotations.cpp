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
        if (run.count <= 0) {
            return;
        }
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

    // `count` runs from the same column on, each a column behind the one before it: of that one
    // it takes a column out of registers as soon as it is done, and so a column is loaded and
    // stored once for all of them (F. G. Van Zee, R. A. van de Geijn, G. Quintana-Orti,
    // "Restructuring the tridiagonal and bidiagonal QR algorithms for performance", ACM Trans.
    // Math. Software 40 (2014) 18:1-18:34).
    template <int count>
    [[gnu::always_inline]] inline void rotateTogether(
        const RotationRun* runs, const PlaneRotation<double>* rotations) const {
        const PlaneRotation<double>* next[std::size_t{count}];
        int first = count - 1, last = runs[0].count;
        for (int w = 0; w < count; ++w) {
            next[w] = rotations;
            rotations += runs[w].count;
            last = std::min(last, runs[w].count + w);
            rotate(part(runs[w], 0, first - w), next[w]);
        }
        double* p = column + runs[0].p * height;
        Vector<lanes> x[std::size_t{count}][std::size_t{groups}];
#pragma GCC unroll 8
        for (int w = 0; w < count; ++w) {
#pragma GCC unroll 8
            for (int g = 0; g < groups; ++g) {
                x[w][g] = vectorsAt<lanes>(p + (first - w) * height)[g];
            }
        }
        for (int t = first; t < last; ++t) {
            Vector<lanes> y[std::size_t{groups}];
#pragma GCC unroll 8
            for (int g = 0; g < groups; ++g) {
                y[g] = vectorsAt<lanes>(p + (t + 1) * height)[g];
            }
#pragma GCC unroll 8
            for (int w = 0; w < count; ++w) {
                const auto [c, s] = next[w][t - w];
#pragma GCC unroll 8
                for (int g = 0; g < groups; ++g) {
                    const Vector<lanes> done = x[w][g] * c + y[g] * s;
                    x[w][g] = y[g] * c - x[w][g] * s;
                    y[g] = done;
                }
            }
#pragma GCC unroll 8
            for (int g = 0; g < groups; ++g) {
                vectorsAt<lanes>(p + (t - first) * height)[g] = y[g];
            }
        }
#pragma GCC unroll 8
        for (int w = 0; w < count; ++w) {
#pragma GCC unroll 8
            for (int g = 0; g < groups; ++g) {
                vectorsAt<lanes>(p + (last - w) * height)[g] = x[w][g];
            }
        }
        for (int w = 0; w < count; ++w) {
            rotate(part(runs[w], last - w, runs[w].count), next[w] + last - w);
        }
    }

    // Rotations first to end - 1 of a run.
    static RotationRun part(const RotationRun& run, int first, int end) {
        return {run.p + first, run.q + first, end - first};
    }
};

}  // namespace

// Whether the runs begin with the same column, and each can follow the one before it through some.
static bool goTogether(const RotationRun* runs, int count) {
    return std::all_of(runs, runs + count, [=](const RotationRun& run) {
        return run.p == runs->p && run.count > count;
    });
}

// Runs that are rotated together, and vectors of rows side by side. Two vectors of four runs, and
// two that pass through, are what 16 registers hold, and enough not to wait for one another. Rows
// that are left over make smaller panels.
static constexpr int together = 4;
template <int lanes, int groups = 2>
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
        const RotationRun* run = runs;
        while (run < runs + runCount) {
            if (runs + runCount - run >= together && goTogether(run, together)) {
                panel.template rotateTogether<together>(run, next);
                for (const RotationRun* end = run + together; run < end; ++run) {
                    next += run->count;
                }
            } else {
                panel.rotate(*run, next);
                next += run++->count;
            }
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
    static_assert(2 * lanes <= panelRows);
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
