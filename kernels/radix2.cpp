#include "kernels/radix2.h"

#include "kernels/shuffles.h"
#include "kernels/trigonometry.h"
#include "kernels/vectors.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <numbers>
#include <utility>

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

// A step of the recurrence waits some 6 cycles for the step before: the twiddles of the last stage
// alone, one after the other, would take longer than everything else. So those of a stage run in 16
// parts side by side, from starts that the recurrence has found once.
struct Stage {
    static constexpr int parts = 16;
    double cosine, sine;
    double re[parts], im[parts];  // twiddle p half / 16; p itself in a shorter stage
};

static constexpr Stage stageOf(int half) {
    const double theta = std::numbers::pi / half;
    Stage stage{cosine(theta), sine(theta), {1.0}, {0.0}};
    const int steps = std::max(half / Stage::parts, 1);
    double ur = 1.0, ui = 0.0;
    for (int p = 1; p < Stage::parts; ++p) {
        for (int j = 0; j < steps; ++j) {
            const double next = stage.cosine * ur - stage.sine * ui;
            ui = stage.cosine * ui + stage.sine * ur;
            ur = next;
        }
        stage.re[p] = ur;
        stage.im[p] = ui;
    }
    return stage;
}

// For stages up to 2^16 the compiler runs the recurrence, for each in an evaluation of its own, as
// it limits the steps of one.
template <std::size_t log2half>
static constexpr Stage shortStage = stageOf(1 << log2half);

template <std::size_t... log2halves>
static constexpr auto allShortStages(std::index_sequence<log2halves...> /*unused*/) {
    return std::array{shortStage<log2halves>...};
}
static constexpr auto shortStages = allShortStages(std::make_index_sequence<17>());

// The twiddles of two or three stages, from `half` on, that run in one pass over memory. At j,
// stage g of them takes the twiddles j + k half, k < 2^g: runs over j that are numbered 2^g - 1 +
// k. Each run has `parts` parts, all of which advance side by side, a piece of `columns` at a time.
template <int stages>
struct Chains {
    static constexpr int runs = (1 << stages) - 1, most = 32, room = 1024;
    int parts;
    std::ptrdiff_t columns;
    // By part and run.
    alignas(64) double cosine[most] = {}, sine[most] = {}, re[most] = {}, im[most] = {};
    // The latest pieces, by part, run and column.
    alignas(64) double latestRe[room], latestIm[room];

    // A load waits for an earlier store whose address has the same last 12 bits, so parts that lie
    // a multiple of 4 kB apart are few, and their pieces long.
    Chains(int half, double sign)
        : parts(half < 4096 ? std::clamp(half / 8, 1, Stage::parts >> (stages - 1)) : 2),
          columns(std::min(half / parts, room / std::max(8, roundedUp(parts * runs)))) {
        for (int g = 0; g < stages; ++g) {
            const auto log2half = std::bit_width(static_cast<unsigned>(half << g)) - 1U;
            const Stage stage =
                log2half < shortStages.size() ? shortStages[log2half] : stageOf(half << g);
            for (int p = 0; p < parts << g; ++p) {
                const int start = (Stage::parts >> g) / parts * p;
                const int chain = p % parts * runs + (1 << g) - 1 + p / parts;
                cosine[chain] = stage.cosine;
                sine[chain] = sign * stage.sine;
                re[chain] = stage.re[start];
                im[chain] = sign * stage.im[start] + 0.0;  // never a negative zero
            }
        }
    }

    // To a power of two.
    static constexpr int roundedUp(int count) {
        return static_cast<int>(std::bit_ceil(static_cast<unsigned>(count)));
    }
};

// Takes all chains on by `columns` twiddles.
template <int lanes, int stages>
[[gnu::always_inline]] static inline void advance(Chains<stages>& chains) {
    const auto columns = chains.columns;
    for (std::ptrdiff_t j = 0; j < columns; j += lanes) {
        for (int q = 0; q < chains.parts * chains.runs; q += lanes) {
            const Vector<lanes> c = *vectorsAt<lanes>(chains.cosine + q);
            const Vector<lanes> s = *vectorsAt<lanes>(chains.sine + q);
            Vector<lanes> ur = *vectorsAt<lanes>(chains.re + q);
            Vector<lanes> ui = *vectorsAt<lanes>(chains.im + q);
            Vector<lanes> re[std::size_t{lanes}], im[std::size_t{lanes}];
#pragma GCC unroll 8
            for (int t = 0; t < lanes; ++t) {
                re[t] = ur;
                im[t] = ui;
                const Vector<lanes> next = c * ur - s * ui;
                ui = c * ui + s * ur;
                ur = next;
            }
            *vectorsAt<lanes>(chains.re + q) = ur;
            *vectorsAt<lanes>(chains.im + q) = ui;
            transpose<lanes>(re);
            transpose<lanes>(im);
#pragma GCC unroll 8
            for (int t = 0; t < lanes; ++t) {
                *vectorsAt<lanes>(chains.latestRe + (q + t) * columns + j) = re[t];
                *vectorsAt<lanes>(chains.latestIm + (q + t) * columns + j) = im[t];
            }
        }
    }
}

// The butterflies of some stages between 2^stages rows. twiddle(run, ur, ui) tells the twiddles.
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

// The stages of the chains from `half` on, and the scale.
template <int lanes, int stages>
[[gnu::always_inline]] static inline void pass(double* re, double* im, int n, int half, double sign,
                                               double scale) {
    constexpr int rows = 1 << stages;
    Chains<stages> chains(half, sign);
    const std::ptrdiff_t row = half, part = half / chains.parts, columns = chains.columns;
    for (std::ptrdiff_t piece = 0; piece < part; piece += columns) {
        advance<lanes>(chains);
        for (std::ptrdiff_t block = 0; block < n; block += rows * row) {
            for (int p = 0; p < chains.parts; ++p) {
                double* a = re + block + p * part + piece;
                double* b = im + block + p * part + piece;
                const double* latestRe = chains.latestRe + p * chains.runs * columns;
                const double* latestIm = chains.latestIm + p * chains.runs * columns;
                for (std::ptrdiff_t j = 0; j < columns; j += lanes) {
                    Vector<lanes> x[std::size_t{rows}], y[std::size_t{rows}];
#pragma GCC unroll 8
                    for (int i = 0; i < rows; ++i) {
                        x[i] = *vectorsAt<lanes>(a + i * row + j);
                        y[i] = *vectorsAt<lanes>(b + i * row + j);
                    }
                    butterflies<lanes, stages>(
                        x, y, [=](int run, Vector<lanes>& ur, Vector<lanes>& ui) {
                            ur = *vectorsAt<lanes>(latestRe + run * columns + j);
                            ui = *vectorsAt<lanes>(latestIm + run * columns + j);
                        });
#pragma GCC unroll 8
                    for (int i = 0; i < rows; ++i) {
                        *vectorsAt<lanes>(a + i * row + j) = x[i] * scale;
                        *vectorsAt<lanes>(b + i * row + j) = y[i] * scale;
                    }
                }
            }
        }
    }
}

// Bit reversal and the first three stages take one pass, tile by tile. Of an index, let r be the
// first three bits, s the last three and q those between: a tile is the 8 x 8 elements of one q,
// and goes to the place of the tile of reversed q, its rows r becoming its columns and the other
// way round, in reversed order. The stages join what lies in one column, so they take whole rows
// side by side before the tile is transposed.
struct Tile {
    alignas(64) double re[8][8], im[8][8];
};
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
    for (int half = 8; half < n; half = size, size = n) {
        const double scale = sign == 1.0 && size == n ? 1.0 / n : 1.0;
        for (int block = 0; block < n; block += size) {
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
