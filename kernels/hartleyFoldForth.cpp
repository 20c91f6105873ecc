#include "kernels/hartleyButterflies.h"
#include "kernels/hartleyFoldParts.h"
#include "kernels/vectors.h"

#include <algorithm>
#include <cstddef>
#include <type_traits>

namespace kernels::fold {

// The first stages, of a vector of blocks: one row of it at each distance. halfZero: the second
// half counts as zeros.
template <int lanes, int rows, bool halfZero>
[[gnu::always_inline]] static inline void firstButterflies(double* x,
                                                           const std::ptrdiff_t* distances) {
    constexpr std::ptrdiff_t step = sixteen / rows;
    Vector<lanes> a[std::size_t{rows}];
#pragma GCC unroll 8
    for (int row = 0; row < rows; ++row) {
        const bool isZero = halfZero && row >= rows / 2;
        a[reversedOfSixteen[row * step]] =
            isZero ? Vector<lanes>{} : *vectorsAt<lanes>(x + distances[row]);
    }
    if constexpr (rows == 4) {
        transformFour<lanes>(a);
    } else {
        transformEight<lanes>(a);
    }
#pragma GCC unroll 8
    for (int row = 0; row < rows; ++row) {
        *vectorsAt<lanes>(x + distances[row]) = a[reversedOfSixteen[row * step]];
    }
}

// The same of all blocks.
template <int lanes, int rows, bool halfZero>
[[gnu::always_inline]] static inline void firstPass(std::integral_constant<int, rows> /*length*/,
                                                    std::bool_constant<halfZero> /*zeros*/, Parts d,
                                                    int n) {
    const std::ptrdiff_t length = n / rows, page = std::min(length, d.page());
    std::ptrdiff_t distances[std::size_t{rows}];
    for (int row = 0; row < rows; ++row) {
        distances[row] = d.distance(length * row);
    }
    for (std::ptrdiff_t first = 0; first < length; first += page) {
        const Parts part = d.at(first);
        for (double* f : {part.re, part.im}) {
            for (double* x = f; x != f + page; x += lanes) {
                firstButterflies<lanes, rows, halfZero>(x, distances);
            }
        }
    }
}

FENDRA_VARIANTS(firstPassVariant, firstPass)

template <int rows>
static void firstStagesOf(Parts d, int n, bool halfZero) {
    const std::integral_constant<int, rows> length;
    if (halfZero) {
        firstPassVariant(length, std::true_type(), d, n);
    } else {
        firstPassVariant(length, std::false_type(), d, n);
    }
}

void firstStages(Parts d, int n, bool halfZero) {
    isEven(log2Of(n)) ? firstStagesOf<4>(d, n, halfZero) : firstStagesOf<8>(d, n, halfZero);
}

namespace {

// The four blocks of a group, `count` elements each. What butterflies know as f1 and f2 lies in
// reversed order: f1 is the third one. A block of pages is taken page by page.
struct Blocks {
    std::ptrdiff_t count, page, second, third, fourth;

    // In one page.
    constexpr explicit Blocks(std::ptrdiff_t size)
        : count(size), page(size), second(size), third(2 * size), fourth(3 * size) {}
    Blocks(const Parts& d, std::ptrdiff_t size)
        : count(size),
          page(std::min(size, d.page())),
          second(d.distance(size)),
          third(d.distance(2 * size)),
          fourth(d.distance(3 * size)) {}
};

}  // namespace

// The butterflies of a page of each block in two mirrored groups.
template <int lanes>
[[gnu::always_inline]] static inline void joinFourAndFour(double* x, double* y,
                                                          const Blocks& blocks, double sine,
                                                          double cosine) {
    const Vector<lanes> zero = {}, s1 = sine - zero, c1 = cosine - zero;
    const std::ptrdiff_t second = blocks.second, third = blocks.third, fourth = blocks.fourth;
    for (std::ptrdiff_t i = 0; i < blocks.page; i += lanes) {
        Vector<lanes> f0 = *vectorsAt<lanes>(x + i), f1 = *vectorsAt<lanes>(x + third + i);
        Vector<lanes> f2 = *vectorsAt<lanes>(x + second + i);
        Vector<lanes> f3 = *vectorsAt<lanes>(x + fourth + i);
        Vector<lanes> g0 = *vectorsAt<lanes>(y + i), g1 = *vectorsAt<lanes>(y + third + i);
        Vector<lanes> g2 = *vectorsAt<lanes>(y + second + i);
        Vector<lanes> g3 = *vectorsAt<lanes>(y + fourth + i);
        joinMirrored<lanes>(f0, f1, f2, f3, g0, g1, g2, g3, s1, c1);
        *vectorsAt<lanes>(x + i) = f0;
        *vectorsAt<lanes>(x + third + i) = f1;
        *vectorsAt<lanes>(x + second + i) = f2;
        *vectorsAt<lanes>(x + fourth + i) = f3;
        *vectorsAt<lanes>(y + i) = g0;
        *vectorsAt<lanes>(y + third + i) = g1;
        *vectorsAt<lanes>(y + second + i) = g2;
        *vectorsAt<lanes>(y + fourth + i) = g3;
    }
}

// The same for `pairs` groups of r from low on upwards and their mirror images from high on
// downwards.
template <int lanes>
[[gnu::always_inline]] static inline void joinMirrorImages(Parts d, int low, int high, int pairs,
                                                           const Blocks& blocks,
                                                           const Twiddles& twiddles) {
    const std::ptrdiff_t size = 4 * blocks.count;
    for (int i = 0; i < pairs; ++i) {
        const int even = isEven(low) ? low : high, odd = isEven(low) ? high : low;
        const double sine = twiddles.reversedSines[even / 2],
                     cosine = twiddles.reversedCosines[even / 2];
        for (std::ptrdiff_t first = 0; first < blocks.count; first += blocks.page) {
            const std::ptrdiff_t x = d.distance(size * even + first);
            const std::ptrdiff_t y = d.distance(size * odd + first);
            joinFourAndFour<lanes>(d.re + x, d.re + y, blocks, sine, cosine);
            joinFourAndFour<lanes>(d.im + x, d.im + y, blocks, sine, cosine);
        }
        ++low;
        --high;
    }
}

// r = 0, which is offset 0, and r = 1, which is half of K: a page of each block in their groups.
template <int lanes>
[[gnu::always_inline]] static inline void joinEnds(double* x, double* y, const Blocks& blocks) {
    for (std::ptrdiff_t i = 0; i < blocks.page; i += lanes) {
        Vector<lanes> f0 = *vectorsAt<lanes>(x + i), f1 = *vectorsAt<lanes>(x + blocks.third + i);
        Vector<lanes> f2 = *vectorsAt<lanes>(x + blocks.second + i);
        Vector<lanes> f3 = *vectorsAt<lanes>(x + blocks.fourth + i);
        join<lanes>(f0, f1, f2, f3);
        *vectorsAt<lanes>(x + i) = f0;
        *vectorsAt<lanes>(x + blocks.third + i) = f1;
        *vectorsAt<lanes>(x + blocks.second + i) = f2;
        *vectorsAt<lanes>(x + blocks.fourth + i) = f3;
        f0 = *vectorsAt<lanes>(y + i);
        f1 = *vectorsAt<lanes>(y + blocks.third + i);
        f2 = *vectorsAt<lanes>(y + blocks.second + i);
        f3 = *vectorsAt<lanes>(y + blocks.fourth + i);
        joinHalfway<lanes>(f0, f1, f2, f3);
        *vectorsAt<lanes>(y + i) = f0;
        *vectorsAt<lanes>(y + blocks.third + i) = f1;
        *vectorsAt<lanes>(y + blocks.second + i) = f2;
        *vectorsAt<lanes>(y + blocks.fourth + i) = f3;
    }
}

// A stage in the first `length` elements, which hold whole groups.
template <int lanes>
[[gnu::always_inline]] static inline void joinAllGroups(Parts d, int length, const Blocks& blocks,
                                                        const Twiddles& twiddles) {
    for (std::ptrdiff_t first = 0; first < blocks.count; first += blocks.page) {
        const std::ptrdiff_t x = d.distance(first), y = d.distance(4 * blocks.count + first);
        joinEnds<lanes>(d.re + x, d.re + y, blocks);
        joinEnds<lanes>(d.im + x, d.im + y, blocks);
    }
    for (int group = 2; group < length / (4 * blocks.count); group *= 2) {
        joinMirrorImages<lanes>(d, group, 2 * group - 1, group / 2, blocks, twiddles);
    }
}

static constexpr int four = 4;

// A stage in which `size` elements belong to each r, except the last: in the first `length`
// elements, or in two mirrored blocks of them. Blocks of four take vectors of four, and code of
// their own.
template <int lanes>
[[gnu::always_inline]] static inline void stageOfGroups(Parts d, int length, int size,
                                                        const Twiddles& twiddles) {
    if (size == 4 * four) {
        joinAllGroups<std::min(lanes, four)>(d, length, Blocks(four), twiddles);
    } else {
        joinAllGroups<lanes>(d, length, Blocks(d, size / 4), twiddles);
    }
}
template <int lanes>
[[gnu::always_inline]] static inline void stageOfBlocks(Parts d, int low, int high, int length,
                                                        int size, const Twiddles& twiddles) {
    const int first = low / size, last = (high + length) / size - 1, pairs = length / size;
    if (size == 4 * four) {
        joinMirrorImages<std::min(lanes, four)>(d, first, last, pairs, Blocks(four), twiddles);
    } else {
        joinMirrorImages<lanes>(d, first, last, pairs, Blocks(d, size / 4), twiddles);
    }
}

FENDRA_VARIANTS(groupsVariant, stageOfGroups)
FENDRA_VARIANTS(blocksVariant, stageOfBlocks)

void joinGroups(Parts d, int length, int size, const Twiddles& twiddles) {
    groupsVariant(d, length, size, twiddles);
}

void joinBlocks(Parts d, int low, int high, int length, int size, const Twiddles& twiddles) {
    blocksVariant(d, low, high, length, size, twiddles);
}

}  // namespace kernels::fold
