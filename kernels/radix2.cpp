#include "kernels/radix2.h"

#include "kernels/WorkWatch.h"
#include "kernels/radix2Twiddles.h"
#include "kernels/shuffles.h"
#include "kernels/trigonometry.h"
#include "kernels/vectors.h"

#include <bit>
#include <cstddef>
#include <numbers>
#include <type_traits>
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

namespace {

// Complex numbers in two arrays.
struct Complexes {
    double *re, *im;
    Complexes operator+(std::ptrdiff_t offset) const { return {re + offset, im + offset}; }
};

}  // namespace

// Three stages at a time join 16 vectors, which are in registers only where there are 32. Elsewhere
// no pass but the first takes three, and that one only of an odd number of stages.
#ifdef __aarch64__
template <int lanes>
constexpr bool joinsThreeStages = true;
#else
template <int lanes>
constexpr bool joinsThreeStages = lanes == 8;
#endif

// The butterfly between rows 0 and p, with the twiddle of a run.
template <int lanes, typename Twiddle>
[[gnu::always_inline]] static inline void joinTwo(Vector<lanes>* x, Vector<lanes>* y, int p,
                                                  int run, const Twiddle& twiddle) {
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
[[gnu::always_inline]] static inline void butterflies(Vector<lanes>* x, Vector<lanes>* y,
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
[[gnu::always_inline]] static inline void joinRows(Complexes from, Complexes to, std::ptrdiff_t row,
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
[[gnu::always_inline]] static inline void tablePass(Complexes from, Complexes to, int n, int half,
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
[[gnu::always_inline]] static inline void chainPass(Complexes a, int n, int half, double sign,
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

// How many stages are left for passes from `half` on.
static int stagesLeft(int n, int half) {
    return std::countr_zero(static_cast<unsigned>(n / half));
}

// Calls pass with the number of its stages as a constant: two, or three where registers hold them.
//
// Three stages in a pass need 16 lines of memory at a time, which are all in one set of the first
// cache if half is 512 or more; a set has 8 or 12. So passes of three come first, and leave an even
// number of stages to passes of two.
template <int lanes, typename Pass>
[[gnu::always_inline]] static inline void withStages(int half, int left, const Pass& pass) {
    if constexpr (joinsThreeStages<lanes>) {
        if (left % 2 == 1 || (half == 8 && left > 4)) {
            return pass(std::integral_constant<int, 3>());
        }
    }
    pass(std::integral_constant<int, 2>());
}

// Calls pass with the row, as a constant in transforms of 2^8 to 2^10 where a vector has up to four
// lanes: the addresses of two stages from one place to another are then few enough for the
// registers.
template <int lanes, typename Pass>
[[gnu::always_inline]] static inline void withRow(int row, const Pass& pass) {
    if constexpr (!joinsThreeStages<lanes>) {
        switch (row) {
            case 64:
                return pass(std::integral_constant<int, 64>());
            case 128:
                return pass(std::integral_constant<int, 128>());
            case 256:
                return pass(std::integral_constant<int, 256>());
            default:
                break;
        }
    }
    pass(row);
}

// All stages from `half` on of a short transform, at `work` except that the last ones go to `to`.
// More than one are left. Here and below, each case has a call of its own: with one pointer instead
// of two, and without a multiplication by 1, a pass is faster.
template <int lanes>
[[gnu::always_inline]] static inline void shortPasses(Complexes work, Complexes to, int n, int half,
                                                      double sign) {
    while (half < n) {
        const int left = stagesLeft(n, half);
        withStages<lanes>(
            half, left, [&](auto stages) __attribute__((always_inline)) {
                if (stages < left) {
                    tablePass<lanes, stages, false>(work, work, n, half, sign, 1.0);
                } else {
                    withRow<lanes>(
                        half, [=](auto row) __attribute__((always_inline)) {
                            if (sign == 1.0) {
                                tablePass<lanes, stages, true>(work, to, row << stages, row, sign,
                                                               1.0 / n);
                            } else {
                                tablePass<lanes, stages, false>(work, to, row << stages, row, sign,
                                                                1.0);
                            }
                        });
                }
                half <<= stages;
            });
    }
}

// All stages from `half` on in place. More than one are left; the last ones of a scale are not all
// in the table.
template <int lanes>
[[gnu::always_inline]] static inline void longPasses(Complexes a, int n, int half, double sign,
                                                     double scale) {
    while (half < n) {
        const int left = stagesLeft(n, half);
        withStages<lanes>(
            half, left, [&](auto stages) __attribute__((always_inline)) {
                if (half << stages <= TwiddleTable::size) {
                    tablePass<lanes, stages, false>(a, a, n, half, sign, 1.0);
                } else if (stages < left || scale == 1.0) {
                    chainPass<lanes, stages, false>(a, n, half, sign, 1.0);
                } else {
                    chainPass<lanes, stages, true>(a, n, half, sign, scale);
                }
                half <<= stages;
            });
    }
}

// The lowest bits of a number, log2 size of them, in reversed order.
static constexpr std::ptrdiff_t reversedBelow(std::ptrdiff_t size, std::ptrdiff_t number) {
    std::ptrdiff_t reversed = 0;
    for (std::ptrdiff_t bit = 1; bit < size; bit *= 2) {
        reversed = 2 * reversed + (number / bit & 1);
    }
    return reversed;
}

// The next number in bit-reversed order: counts from the bit `top` downwards.
static int nextReversed(int reversed, int top) {
    while ((reversed & top) != 0) {
        reversed ^= top;
        top /= 2;
    }
    return reversed | top;
}

// Takes `lanes` columns of 2^stages rows through the first stages. What is in a column is then put
// side by side in a row, the rows in bit-reversed order of the columns.
template <int lanes, int stages>
[[gnu::always_inline]] static inline void turnSquare(Complexes from, std::ptrdiff_t fromRow,
                                                     Complexes to, std::ptrdiff_t toRow,
                                                     double sign) {
    constexpr int rows = 1 << stages;
    Vector<lanes> x[std::size_t{rows}], y[std::size_t{rows}];
#pragma GCC unroll 8
    for (int i = 0; i < rows; ++i) {
        x[i] = *vectorsAt<lanes>(from.re + reversedBelow(rows, i) * fromRow);
        y[i] = *vectorsAt<lanes>(from.im + reversedBelow(rows, i) * fromRow);
    }
    butterflies<lanes, stages>(x, y, [=](int run, Vector<lanes>& ur, Vector<lanes>& ui) {
        const int g = run < 1 ? 0 : run < 3 ? 1 : 2, k = run - ((1 << g) - 1);
        const Stage& stage = shortStages[static_cast<std::size_t>(g)];
        ur = Vector<lanes>{} + stage.re[k];
        ui = Vector<lanes>{} + (k == 0 ? 0.0 : sign * stage.im[k]);
    });
#pragma GCC unroll 4
    for (int k = 0; k < rows; k += lanes) {
        transpose<lanes>(x + k);
        transpose<lanes>(y + k);
#pragma GCC unroll 8
        for (int t = 0; t < lanes; ++t) {
            *vectorsAt<lanes>(to.re + reversedBelow(lanes, t) * toRow + k) = x[k + t];
            *vectorsAt<lanes>(to.im + reversedBelow(lanes, t) * toRow + k) = y[k + t];
        }
    }
}

// Bit reversal and the first stages of all, from one place to another.
template <int lanes, int stages>
[[gnu::always_inline]] static inline void firstPass(Complexes from, Complexes to, int n,
                                                    double sign) {
    constexpr int rows = 1 << stages;
    const int columns = n / rows, top = columns / lanes / 2;
    for (int q = 0, other = 0; q < columns; q += lanes, other = nextReversed(other, top)) {
        const std::ptrdiff_t target = other;
        turnSquare<lanes, stages>(from + q, columns, to + target * rows, n / lanes, sign);
    }
}

namespace {

// In place that goes tile by tile. Of an index, let r be the first three bits, s the last three and
// q those between: a tile is the 8 x 8 elements of one q, and goes to the place of the tile of
// reversed q, its rows r becoming its columns and the other way round, in reversed order. So each
// line of memory is read and written as a whole.
struct Tile {
    alignas(64) double re[64], im[64];
};

}  // namespace

template <int lanes, int stages>
[[gnu::always_inline]] static inline void turnTile(Complexes from, std::ptrdiff_t fromRow,
                                                   Complexes to, std::ptrdiff_t toRow,
                                                   double sign) {
    constexpr int rows = 1 << stages, sets = 8 / rows, groups = 8 / lanes;
    for (std::ptrdiff_t set = 0; set < sets; ++set) {
        for (std::ptrdiff_t group = 0; group < groups; ++group) {
            turnSquare<lanes, stages>(
                from + (set * fromRow + group * lanes), sets * fromRow,
                to + (reversedBelow(groups, group) * toRow + reversedBelow(sets, set) * rows),
                groups * toRow, sign);
        }
    }
}

template <int lanes>
[[gnu::always_inline]] static inline void copyTile(const Tile& tile, Complexes to,
                                                   std::ptrdiff_t toRow) {
    for (std::ptrdiff_t r = 0; r < 8; ++r) {
        for (std::ptrdiff_t s = 0; s < 8; s += lanes) {
            *vectorsAt<lanes>(to.re + r * toRow + s) = *vectorsAt<lanes>(tile.re + 8 * r + s);
            *vectorsAt<lanes>(to.im + r * toRow + s) = *vectorsAt<lanes>(tile.im + 8 * r + s);
        }
    }
}

template <int lanes, int stages>
[[gnu::always_inline]] static inline void firstPassInPlace(Complexes a, int n, double sign) {
    const std::ptrdiff_t row = n / 8;
    const int tiles = n / 64;
    Tile tile;
    for (int q = 0, other = 0; q < tiles; ++q, other = nextReversed(other, tiles / 2)) {
        if (q > other) {
            continue;
        }
        const Complexes here = a + std::ptrdiff_t{8} * q, there = a + std::ptrdiff_t{8} * other;
        turnTile<lanes, stages>(here, row, {tile.re, tile.im}, 8, sign);
        if (q < other) {
            turnTile<lanes, stages>(there, row, here, row, sign);
        }
        copyTile<lanes>(tile, there, row);
    }
}

namespace {

// A short transform runs in a buffer, which is aligned and in the first caches: it needs no tiles.
struct Buffer {
    static constexpr int size = 2048;
    alignas(64) double re[size], im[size];
};

}  // namespace

// The longest block within n that is not above the limit and leaves an even number of stages.
static int blockOf(int n, int limit) {
    while (n > limit) {
        n /= 4;
    }
    return n;
}

// Calls pass with the number of the first stages as a constant: three, or two where that leaves an
// even number to passes of two.
template <int lanes, typename Pass>
[[gnu::always_inline]] static inline int withFirstStages(int n, const Pass& pass) {
    if constexpr (!joinsThreeStages<lanes>) {
        if (stagesLeft(n, 1) % 2 == 0) {
            pass(std::integral_constant<int, 2>());
            return 1 << 2;
        }
    }
    pass(std::integral_constant<int, 3>());
    return 1 << 3;
}

template <int lanes>
[[gnu::always_inline]] static inline void transformShort(Complexes all, int n, double sign) {
    Buffer buffer;
    const Complexes work = {buffer.re, buffer.im};
    const int half = withFirstStages<lanes>(
        n, [=](auto stages)
               __attribute__((always_inline)) { firstPass<lanes, stages>(all, work, n, sign); });
    shortPasses<lanes>(work, all, n, half, sign);
}

// Goes as far as it can in blocks for the first cache (16 kB), then in blocks for the second (256
// kB).
template <int lanes>
[[gnu::always_inline]] static inline void transformLong(Complexes all, int n, double sign) {
    const int first = withFirstStages<lanes>(
        n, [=](auto stages)
               __attribute__((always_inline)) { firstPassInPlace<lanes, stages>(all, n, sign); });
    const int outer = blockOf(n, 1 << 14), inner = blockOf(outer, 1 << 10);
    WorkCount count(WorkCount::unknown);
    for (std::ptrdiff_t end = inner; end <= n; end += inner) {
        int half = first;
        for (const int size : {inner, outer, n}) {
            if (half < size && end % size == 0) {
                const double scale = sign == 1.0 && size == n ? 1.0 / n : 1.0;
                count.add(WorkWatch::element * size);
                longPasses<lanes>(all + (end - size), size, half, sign, scale);
            }
            half = size;
        }
    }
}

template <int lanes>
[[gnu::always_inline]] static inline void transform(Complexes all, int n, double sign) {
    if (n <= Buffer::size) {
        transformShort<lanes>(all, n, sign);
    } else {
        transformLong<lanes>(all, n, sign);
    }
}

FENDRA_VARIANTS(radix2Variant, transform)

void radix2(double* re, double* im, int n, double sign) {
    if (n < 64 || (sign != 1.0 && sign != -1.0)) {
        plain::radix2(re, im, n, sign);
    } else {
        radix2Variant(Complexes{re, im}, n, sign);
    }
}

}  // namespace kernels
