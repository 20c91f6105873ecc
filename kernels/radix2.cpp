#include "kernels/radix2.h"

#include "kernels/WorkWatch.h"
#include "kernels/radix2Twiddles.h"
#include "kernels/shuffles.h"
#include "kernels/trigonometry.h"
#include "kernels/vectors.h"

#include <bit>
#include <cstddef>
#include <numbers>
#include <utility>

namespace kernels {

static void reverseBits(double* re, double* im, int n) {
    int reversed = 0;
    for (int i = 0; i < n - 1; ++i) {
        if (i < reversed) {
            std::swap(re[i], re[reversed]);
            std::swap(im[i], im[reversed]);
        }
        int bit = n / 2;
        while (bit <= reversed) {
            reversed -= bit;
            bit /= 2;
        }
        reversed += bit;
    }
}

// Joins transforms of length half, two at a time. (ur, ui) = exp(sign i pi j / half).
static void radix2Stage(double* re, double* im, int n, int half, double sign) {
    const double theta = std::numbers::pi / half;
    const double c = cosine(theta), s = sign * sine(theta);
    double ur = 1.0, ui = 0.0;
    for (int j = 0; j < half; ++j) {
        for (int i = j; i < n; i += 2 * half) {
            const int p = i + half;
            const double tr = ur * re[p] - ui * im[p];
            const double ti = ui * re[p] + ur * im[p];
            re[p] = re[i] - tr;
            im[p] = im[i] - ti;
            re[i] += tr;
            im[i] += ti;
        }
        const double next = c * ur - s * ui;
        ui = c * ui + s * ur;
        ur = next;
    }
}

void plain::radix2(double* re, double* im, int n, double sign) {
    reverseBits(re, im, n);
    for (int half = 1; half < n; half *= 2) {
        radix2Stage(re, im, n, half, sign);
    }
    if (sign == 1.0) {
        for (int i = 0; i < n; ++i) {
            re[i] /= n;
            im[i] /= n;
        }
    }
}

// The butterflies of some stages between 2^stages rows. twiddle(run, ur, ui) sets the twiddles.
template <int lanes, int stages, typename Twiddle>
[[gnu::always_inline]] static inline void butterflies(Vector<lanes> (&x)[std::size_t{1} << stages],
                                                      Vector<lanes> (&y)[std::size_t{1} << stages],
                                                      const Twiddle& twiddle) {
#pragma GCC unroll 4
    for (int g = 0; g < stages; ++g) {
#pragma GCC unroll 4
        for (int b = 0; b < 1 << (stages - 1); ++b) {
            const int k = b % (1 << g), i = 2 * b - k, p = i + (1 << g);
            Vector<lanes> ur, ui;
            twiddle((1 << g) - 1 + k, ur, ui);
            const Vector<lanes> tr = ur * x[p] - ui * y[p];
            const Vector<lanes> ti = ui * x[p] + ur * y[p];
            x[p] = x[i] - tr;
            y[p] = y[i] - ti;
            x[i] += tr;
            y[i] += ti;
        }
    }
}

// Runs some stages between rows that lie `row` apart, on `columns` columns from re and im on.
// twiddle(run, j, ur, ui) sets the twiddles at column j.
template <int lanes, int stages, typename Twiddle>
[[gnu::always_inline]] static inline void joinRows(double* re, double* im, std::ptrdiff_t row,
                                                   std::ptrdiff_t columns, double scale,
                                                   const Twiddle& twiddle) {
    constexpr int rows = 1 << stages;
    for (std::ptrdiff_t j = 0; j < columns; j += lanes) {
        Vector<lanes> x[std::size_t{rows}], y[std::size_t{rows}];
#pragma GCC unroll 8
        for (int i = 0; i < rows; ++i) {
            x[i] = *vectorsAt<lanes>(re + i * row + j);
            y[i] = *vectorsAt<lanes>(im + i * row + j);
        }
        butterflies<lanes, stages>(
            x, y, [=](int run, Vector<lanes>& ur, Vector<lanes>& ui) { twiddle(run, j, ur, ui); });
#pragma GCC unroll 8
        for (int i = 0; i < rows; ++i) {
            *vectorsAt<lanes>(re + i * row + j) = x[i] * scale;
            *vectorsAt<lanes>(im + i * row + j) = y[i] * scale;
        }
    }
}

// The stages from `half` on, all of which are in the table, and the scale.
template <int lanes, int stages>
[[gnu::always_inline]] static inline void tablePass(double* re, double* im, int n, int half,
                                                    double sign, double scale) {
    const std::ptrdiff_t row = half;
    const double* tableRe = twiddleTable.re + row;
    const double* tableIm = twiddleTable.im + row;
    for (std::ptrdiff_t block = 0; block < n; block += row << stages) {
        joinRows<lanes, stages>(
            re + block, im + block, row, row, scale,
            [=](int run, std::ptrdiff_t j, Vector<lanes>& ur, Vector<lanes>& ui) {
                ur = *vectorsAt<lanes>(tableRe + run * row + j);
                ui = *vectorsAt<lanes>(tableIm + run * row + j) * sign + 0.0;  // no negative zero
            });
    }
}

// The stages from `half` on by chains, and the scale.
template <int lanes, int stages>
[[gnu::always_inline]] static inline void chainPass(double* re, double* im, int n, int half,
                                                    double sign, double scale) {
    Chains<stages> chains(half, sign);
    const std::ptrdiff_t row = half, part = half / chains.parts, columns = chains.columns;
    for (std::ptrdiff_t piece = 0; piece < part; piece += columns) {
        advance<lanes>(chains);
        for (std::ptrdiff_t block = 0; block < n; block += row << stages) {
            for (int p = 0; p < chains.parts; ++p) {
                const std::ptrdiff_t at = block + p * part + piece;
                const double* latestRe = chains.latestRe + p * chains.runs * columns;
                const double* latestIm = chains.latestIm + p * chains.runs * columns;
                joinRows<lanes, stages>(
                    re + at, im + at, row, columns, scale,
                    [=](int run, std::ptrdiff_t j, Vector<lanes>& ur, Vector<lanes>& ui) {
                        ur = *vectorsAt<lanes>(latestRe + run * columns + j);
                        ui = *vectorsAt<lanes>(latestIm + run * columns + j);
                    });
            }
        }
    }
}

template <int lanes, int stages>
[[gnu::always_inline]] static inline void pass(double* re, double* im, int n, int half, double sign,
                                               double scale) {
    if (half << stages <= TwiddleTable::size) {
        tablePass<lanes, stages>(re, im, n, half, sign, scale);
    } else {
        chainPass<lanes, stages>(re, im, n, half, sign, scale);
    }
}

namespace {

// Bit reversal and the first three stages take one pass, tile by tile. Of an index, let r be the
// first three bits, s the last three and q those between: a tile is the 8 x 8 elements of one q,
// and goes to the place of the tile of reversed q, its rows r becoming its columns and the other
// way round, in reversed order. The stages join what lies in one column, so they take whole rows
// side by side before the tile is transposed.
struct Tile {
    alignas(64) double re[8][8], im[8][8];
};

}  // namespace
static constexpr int reversedOfThree[8] = {0, 4, 2, 6, 1, 5, 3, 7};

template <int lanes>
[[gnu::always_inline]] static inline void loadTile(const double* re, const double* im,
                                                   std::ptrdiff_t stride, double sign, Tile& tile) {
    for (int s = 0; s < 8; s += lanes) {
        Vector<lanes> x[8], y[8];
#pragma GCC unroll 8
        for (int r = 0; r < 8; ++r) {
            x[reversedOfThree[r]] = *vectorsAt<lanes>(re + r * stride + s);
            y[reversedOfThree[r]] = *vectorsAt<lanes>(im + r * stride + s);
        }
        butterflies<lanes, 3>(x, y, [=](int run, Vector<lanes>& ur, Vector<lanes>& ui) {
            const int g = run < 1 ? 0 : run < 3 ? 1 : 2, k = run - ((1 << g) - 1);
            const Stage& stage = shortStages[static_cast<std::size_t>(g)];
            ur = Vector<lanes>{} + stage.re[k];
            ui = Vector<lanes>{} + sign * stage.im[k];  // never a negative zero
        });
        for (int r = 0; r < 8; r += lanes) {
            Vector<lanes> u[std::size_t{lanes}], v[std::size_t{lanes}];
#pragma GCC unroll 8
            for (int t = 0; t < lanes; ++t) {
                u[t] = x[r + t];
                v[t] = y[r + t];
            }
            transpose<lanes>(u);
            transpose<lanes>(v);
#pragma GCC unroll 8
            for (int t = 0; t < lanes; ++t) {
                *vectorsAt<lanes>(tile.re[reversedOfThree[s + t]] + r) = u[t];
                *vectorsAt<lanes>(tile.im[reversedOfThree[s + t]] + r) = v[t];
            }
        }
    }
}

template <int lanes>
[[gnu::always_inline]] static inline void storeTile(const Tile& tile, double* re, double* im,
                                                    std::ptrdiff_t stride) {
    for (int r = 0; r < 8; ++r) {
        for (int s = 0; s < 8; s += lanes) {
            *vectorsAt<lanes>(re + r * stride + s) = *vectorsAt<lanes>(tile.re[r] + s);
            *vectorsAt<lanes>(im + r * stride + s) = *vectorsAt<lanes>(tile.im[r] + s);
        }
    }
}

template <int lanes>
[[gnu::always_inline]] static inline void firstPass(double* re, double* im, int n, double sign) {
    const std::ptrdiff_t stride = n / 8;
    const int tiles = n / 64;
    Tile here, there;
    for (int q = 0, other = 0; q < tiles; ++q) {
        if (q <= other) {
            const int from = 8 * q, to = 8 * other;
            loadTile<lanes>(re + from, im + from, stride, sign, here);
            loadTile<lanes>(re + to, im + to, stride, sign, there);
            storeTile<lanes>(there, re + from, im + from, stride);
            storeTile<lanes>(here, re + to, im + to, stride);
        }
        int bit = tiles / 2;
        for (; (other & bit) != 0; bit /= 2) {
            other ^= bit;
        }
        other ^= bit;
    }
}

// All stages from `half` on, which is 8 or leaves an even number of stages.
//
// Three stages in a pass need 16 lines of memory at a time, which are all in one set of the first
// cache if half is 512 or more; a set has 8 or 12. So passes of three come first, one or two, and
// leave an even number of stages to passes of two.
template <int lanes>
[[gnu::always_inline]] static inline void passes(double* re, double* im, int n, int half,
                                                 double sign, double scale) {
    while (half < n) {
        const int left = std::countr_zero(static_cast<unsigned>(n / half));
        const int stages = left % 2 == 1 || (half == 8 && left > 4) ? 3 : 2;
        const double factor = stages == left ? scale : 1.0;
        if (stages == 3) {
            pass<lanes, 3>(re, im, n, half, sign, factor);
        } else {
            pass<lanes, 2>(re, im, n, half, sign, factor);
        }
        half <<= stages;
    }
}

// A long transform first goes as far as it can in blocks for the second cache (1 MB at most), so
// that an even number of stages is left.
template <int lanes>
[[gnu::always_inline]] static inline void transform(double* re, double* im, int n, double sign) {
    firstPass<lanes>(re, im, n, sign);
    int size = n;
    while (size > 1 << 16) {
        size /= 4;
    }
    WorkCount work(WorkCount::unknown);
    for (int half = 8; half < n; half = size, size = n) {
        const double scale = sign == 1.0 && size == n ? 1.0 / n : 1.0;
        for (int block = 0; block < n; block += size) {
            work.add(WorkWatch::element * size);
            passes<lanes>(re + block, im + block, size, half, sign, scale);
        }
    }
}

FENDRA_VARIANTS(radix2Variant, transform)

void radix2(double* re, double* im, int n, double sign) {
    if (n < 64 || (sign != 1.0 && sign != -1.0)) {
        plain::radix2(re, im, n, sign);
    } else {
        radix2Variant(re, im, n, sign);
    }
}

}  // namespace kernels
