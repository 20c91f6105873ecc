#include "kernels/hartley.h"

#include "kernels/WorkWatch.h"
#include "kernels/hartleyButterflies.h"
#include "kernels/hartleyTwiddles.h"
#include "kernels/shuffles.h"
#include "kernels/vectors.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace kernels {

// The next number in bit-reversed order: counts from the bit `top` downwards.
static int nextReversed(int reversed, int top) {
    while ((reversed & top) != 0) {
        reversed ^= top;
        top /= 2;
    }
    return reversed | top;
}

static void reverseBits(double* f, int n) {
    for (int i = 0, reversed = 0; i < n; ++i, reversed = nextReversed(reversed, n / 2)) {
        if (i < reversed) {
            std::swap(f[i], f[reversed]);
        }
    }
}

// Joins transforms of length k1 = 2^k, four at a time.
static void joinFours(double* f, int n, int k) {
    const int k1 = 1 << k, k2 = 2 * k1, k3 = k1 + k2, k4 = 2 * k2;
    for (double* x = f; x != f + n; x += k4) {
        double* y = x + k1 / 2;
        join<1>(x[0], x[k1], x[k2], x[k3]);
        joinHalfway<1>(y[0], y[k1], y[k2], y[k3]);
    }
    TwiddleRecursion twiddle(k);
    for (int at = 1; at < k1 / 2; ++at) {
        twiddle.next();
        for (double* block = f; block != f + n; block += k4) {
            double *x = block + at, *y = block + k1 - at;
            joinMirrored<1>(x[0], x[k1], x[k2], x[k3], y[0], y[k1], y[k2], y[k3], twiddle.sine,
                            twiddle.cosine);
        }
    }
}

static void transformFours(double* f, int n) {
    const int log2n = log2Of(n);
    reverseBits(f, n);
    for (int i = 0; i < n; i += isEven(log2n) ? 4 : 8) {
        isEven(log2n) ? transformFour<1>(f + i) : transformEight<1>(f + i);
    }
    for (int k = isEven(log2n) ? 2 : 3; k < log2n; k += 2) {
        joinFours(f, n, k);
    }
}

void plain::hartley(double* f, int n, int normalise) {
    if (n == 2) {
        const double difference = f[0] - f[1];
        f[0] += f[1];
        f[1] = difference;
    } else if (n > 2) {
        transformFours(f, n);
    }
    for (int i = 0; i < n && normalise != 0; ++i) {
        f[i] /= n;
    }
}

// In vectors, a pass over memory does as much as it can. The first one reverses the order of the
// bits in tiles. With the index in binary as (a, m, b), a and b of 4 bits, tile m holds the
// elements of all a, as rows, and all b; it goes, turned round, to where the tile of m reversed
// was. Before, its rows, taken by a reversed, stand as 16 successive elements will, for 16 values
// of b side by side: they go through the first pass and, if that was of length 4, through the first
// stage.
static constexpr int tileSize = sixteen;
using Tile = double[tileSize][tileSize];

template <int lanes>
[[gnu::always_inline]] static inline void loadTile(Tile& tile, const double* from,
                                                   std::ptrdiff_t stride, bool inFours) {
    for (int column = 0; column < tileSize; column += lanes) {
        Vector<lanes> rows[tileSize];
#pragma GCC unroll 16
        for (int row = 0; row < tileSize; ++row) {
            rows[reversedOfSixteen[row]] = *vectorsAt<lanes>(from + row * stride + column);
        }
        inFours ? transformSixteen<lanes, true>(rows) : transformSixteen<lanes, false>(rows);
#pragma GCC unroll 16
        for (int row = 0; row < tileSize; ++row) {
            *vectorsAt<lanes>(tile[row] + column) = rows[row];
        }
    }
}

template <int lanes>
[[gnu::always_inline]] static inline void storeTurned(const Tile& tile, double* to,
                                                      std::ptrdiff_t stride) {
    for (int column = 0; column < tileSize; column += lanes) {
        for (int row = 0; row < tileSize; row += lanes) {
            Vector<lanes> square[std::size_t{lanes}];
#pragma GCC unroll 8
            for (int i = 0; i < lanes; ++i) {
                square[i] = *vectorsAt<lanes>(tile[row + i] + column);
            }
            transpose<lanes>(square);
#pragma GCC unroll 8
            for (int i = 0; i < lanes; ++i) {
                *vectorsAt<lanes>(to + reversedOfSixteen[column + i] * stride + row) = square[i];
            }
        }
    }
}

template <int lanes>
[[gnu::always_inline]] static inline void reverseBitsAndTransform(double* f, int n) {
    const std::ptrdiff_t stride = n / tileSize;
    const int tiles = n / (tileSize * tileSize);
    const bool inFours = isEven(log2Of(n));
    alignas(64) Tile tile, mirror;
    for (int m = 0, reversed = 0; m < tiles; ++m, reversed = nextReversed(reversed, tiles / 2)) {
        double* here = f + std::ptrdiff_t{m} * tileSize;
        double* there = f + std::ptrdiff_t{reversed} * tileSize;
        if (m <= reversed) {
            loadTile<lanes>(tile, here, stride, inFours);
            if (m < reversed) {
                loadTile<lanes>(mirror, there, stride, inFours);
                storeTurned<lanes>(mirror, here, stride);
            }
            storeTurned<lanes>(tile, there, stride);
        }
    }
}

// The butterflies at offsets first + 1 .. first + count of one block. count is a multiple of lanes.
template <int lanes>
[[gnu::always_inline]] static inline void joinOffsets(double* block, int k1, int first, int count,
                                                      const TwiddleRun& run) {
    const int k2 = 2 * k1, k3 = k1 + k2;
    for (int i = 1; i <= count; i += lanes) {
        double* x = block + first + i;
        double* y = block + k1 - first - i - (lanes - 1);
        Vector<lanes> f0 = *vectorsAt<lanes>(x), f1 = *vectorsAt<lanes>(x + k1);
        Vector<lanes> f2 = *vectorsAt<lanes>(x + k2), f3 = *vectorsAt<lanes>(x + k3);
        Vector<lanes> g0 = *vectorsAt<lanes>(y), g1 = *vectorsAt<lanes>(y + k1);
        Vector<lanes> g2 = *vectorsAt<lanes>(y + k2), g3 = *vectorsAt<lanes>(y + k3);
        reverseLanes<lanes>(g0);
        reverseLanes<lanes>(g1);
        reverseLanes<lanes>(g2);
        reverseLanes<lanes>(g3);
        const Vector<lanes> s1 = *vectorsAt<lanes>(run.sines + i);
        const Vector<lanes> c1 = *vectorsAt<lanes>(run.cosines + i);
        joinMirrored<lanes>(f0, f1, f2, f3, g0, g1, g2, g3, s1, c1);
        reverseLanes<lanes>(g0);
        reverseLanes<lanes>(g1);
        reverseLanes<lanes>(g2);
        reverseLanes<lanes>(g3);
        *vectorsAt<lanes>(x) = f0;
        *vectorsAt<lanes>(x + k1) = f1;
        *vectorsAt<lanes>(x + k2) = f2;
        *vectorsAt<lanes>(x + k3) = f3;
        *vectorsAt<lanes>(y) = g0;
        *vectorsAt<lanes>(y + k1) = g1;
        *vectorsAt<lanes>(y + k2) = g2;
        *vectorsAt<lanes>(y + k3) = g3;
    }
}

// The same in all blocks, and offset 0 with the first run. The last run ends halfway, where the
// vectors meet their mirror image and leave what is not wanted.
template <int lanes>
[[gnu::always_inline]] static inline void joinBlocks(double* f, int n, int k1, int first, int count,
                                                     const TwiddleRun& run) {
    const int k2 = 2 * k1, k3 = k1 + k2, k4 = 2 * k2;
    for (double* x = f; x != f + n; x += k4) {
        double* y = x + k1 / 2;
        double g0 = y[0], g1 = y[k1], g2 = y[k2], g3 = y[k3];
        if (first == 0) {
            join<1>(x[0], x[k1], x[k2], x[k3]);
        }
        joinOffsets<lanes>(x, k1, first, count, run);
        if (first + count == k1 / 2) {
            joinHalfway<1>(g0, g1, g2, g3);
            y[0] = g0;
            y[k1] = g1;
            y[k2] = g2;
            y[k3] = g3;
        }
    }
}

// The stages up to this length run one after the other in 32 kB, which the first-level cache holds;
// their twiddles, one run a stage, serve all pieces of that length. From there on a stage is a pass
// over memory, with one run of twiddles after the other for all blocks.
static constexpr int longestPiece = 4096, longestStages = 4;

template <int lanes>
[[gnu::always_inline]] static inline void joinPieces(double* f, int n, int piece, int k) {
    const int log2Piece = log2Of(piece), firstK = k;
    TwiddleRun runs[longestStages];
    for (; k < log2Piece; k += 2) {
        TwiddleRecursion ends(1);
        fill<lanes>(runs[(k - firstK) / 2], k, 0, 1 << (k - 1), ends);
    }
    for (double* start = f; start != f + n; start += piece) {
        for (k = firstK; k < log2Piece; k += 2) {
            const TwiddleRun& run = runs[(k - firstK) / 2];
            if (k == 3) {
                joinBlocks<std::min(lanes, 4)>(start, piece, 8, 0, 4, run);
            } else {
                joinBlocks<lanes>(start, piece, 1 << k, 0, 1 << (k - 1), run);
            }
        }
    }
}

template <int lanes>
[[gnu::always_inline]] static inline void joinPasses(double* f, int n, int k) {
    constexpr int length = TwiddleRun::longest;
    WorkCount work(WorkCount::unknown);
    for (; k < log2Of(n); k += 2) {
        work.add(WorkWatch::element * n);
        TwiddleRecursion ends(k - log2Of(length));
        for (int first = 0; first < 1 << (k - 1); first += length) {
            TwiddleRun run;
            fill<lanes>(run, k, first, length, ends);
            joinBlocks<lanes>(f, n, 1 << k, first, length, run);
        }
    }
}

template <int lanes>
[[gnu::always_inline]] static inline void transformTiled(double* f, int n, int normalise) {
    const bool inFours = isEven(log2Of(n));
    const int piece = std::min(n, inFours ? longestPiece : longestPiece / 2);
    reverseBitsAndTransform<lanes>(f, n);
    joinPieces<lanes>(f, n, piece, inFours ? 4 : 3);
    joinPasses<lanes>(f, n, log2Of(piece));
    const double scale = 1.0 / n;  // a power of two: the product is the quotient
    for (int i = 0; i < n && normalise != 0; i += lanes) {
        *vectorsAt<lanes>(f + i) *= scale;
    }
}

FENDRA_VARIANTS(hartleyVariant, transformTiled)

void hartley(double* f, int n, int normalise) {
    if (n < tileSize * tileSize) {
        plain::hartley(f, n, normalise);
    } else {
        hartleyVariant(f, n, normalise);
    }
}

}  // namespace kernels
