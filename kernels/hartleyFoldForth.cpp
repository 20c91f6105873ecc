#include "kernels/hartleyButterflies.h"
#include "kernels/hartleyFoldParts.h"
#include "kernels/vectors.h"

#include <algorithm>
#include <cstddef>
#include <type_traits>

namespace kernels::fold {

// The first stages, of all blocks side by side. halfZero: the second half counts as zeros.
template <int lanes, int rows, bool halfZero>
[[gnu::always_inline]] static inline void firstPass(std::integral_constant<int, rows> /*length*/,
                                                    std::bool_constant<halfZero> /*zeros*/,
                                                    double* f, int n) {
    constexpr std::ptrdiff_t step = sixteen / rows;
    const std::ptrdiff_t stride = n / rows;
    for (double* x = f; x != f + stride; x += lanes) {
        Vector<lanes> a[std::size_t{rows}];
#pragma GCC unroll 8
        for (int row = 0; row < rows; ++row) {
            const int to = reversedOfSixteen[row * step];
            a[to] =
                halfZero && row >= rows / 2 ? Vector<lanes>{} : *vectorsAt<lanes>(x + row * stride);
        }
        if constexpr (rows == 4) {
            transformFour<lanes>(a);
        } else {
            transformEight<lanes>(a);
        }
#pragma GCC unroll 8
        for (int row = 0; row < rows; ++row) {
            *vectorsAt<lanes>(x + row * stride) = a[reversedOfSixteen[row * step]];
        }
    }
}

FENDRA_VARIANTS(firstPassVariant, firstPass)

template <int rows>
static void firstStagesOf(Parts d, int n, bool halfZero) {
    const std::integral_constant<int, rows> length;
    for (double* part : {d.re, d.im}) {
        if (halfZero) {
            firstPassVariant(length, std::true_type(), part, n);
        } else {
            firstPassVariant(length, std::false_type(), part, n);
        }
    }
}

void firstStages(Parts d, int n, bool halfZero) {
    isEven(log2Of(n)) ? firstStagesOf<4>(d, n, halfZero) : firstStagesOf<8>(d, n, halfZero);
}

// The butterflies of two mirrored groups of four blocks, each of `count` elements; f1 and f2 lie in
// reversed order.
template <int lanes>
[[gnu::always_inline]] static inline void joinFourAndFour(double* x, double* y, int count,
                                                          double sine, double cosine) {
    const Vector<lanes> zero = {}, s1 = sine - zero, c1 = cosine - zero;
    const std::ptrdiff_t step = count;
    for (int i = 0; i < count; i += lanes) {
        Vector<lanes> f0 = *vectorsAt<lanes>(x + i), f1 = *vectorsAt<lanes>(x + 2 * step + i);
        Vector<lanes> f2 = *vectorsAt<lanes>(x + step + i);
        Vector<lanes> f3 = *vectorsAt<lanes>(x + 3 * step + i);
        Vector<lanes> g0 = *vectorsAt<lanes>(y + i), g1 = *vectorsAt<lanes>(y + 2 * step + i);
        Vector<lanes> g2 = *vectorsAt<lanes>(y + step + i);
        Vector<lanes> g3 = *vectorsAt<lanes>(y + 3 * step + i);
        joinMirrored<lanes>(f0, f1, f2, f3, g0, g1, g2, g3, s1, c1);
        *vectorsAt<lanes>(x + i) = f0;
        *vectorsAt<lanes>(x + 2 * step + i) = f1;
        *vectorsAt<lanes>(x + step + i) = f2;
        *vectorsAt<lanes>(x + 3 * step + i) = f3;
        *vectorsAt<lanes>(y + i) = g0;
        *vectorsAt<lanes>(y + 2 * step + i) = g1;
        *vectorsAt<lanes>(y + step + i) = g2;
        *vectorsAt<lanes>(y + 3 * step + i) = g3;
    }
}

// The same for `pairs` groups of r from low on upwards and their mirror images from high on
// downwards; 4 count elements belong to each r.
template <int lanes>
[[gnu::always_inline]] static inline void joinMirrorImages(Parts d, int low, int high, int pairs,
                                                           int count, const Twiddles& twiddles) {
    for (int i = 0; i < pairs; ++i) {
        const int even = isEven(low) ? low : high, odd = isEven(low) ? high : low;
        const std::ptrdiff_t x = 4 * std::ptrdiff_t{even} * count,
                             y = 4 * std::ptrdiff_t{odd} * count;
        const double sine = twiddles.reversedSines[even / 2],
                     cosine = twiddles.reversedCosines[even / 2];
        joinFourAndFour<lanes>(d.re + x, d.re + y, count, sine, cosine);
        joinFourAndFour<lanes>(d.im + x, d.im + y, count, sine, cosine);
        ++low;
        --high;
    }
}

// r = 0, which is offset 0, and r = 1, which is half of K.
template <int lanes>
[[gnu::always_inline]] static inline void joinEnds(double* f, int count) {
    const std::ptrdiff_t step = count;
    for (int i = 0; i < count; i += lanes) {
        double *x = f + i, *y = f + 4 * step + i;
        Vector<lanes> f0 = *vectorsAt<lanes>(x), f1 = *vectorsAt<lanes>(x + 2 * step);
        Vector<lanes> f2 = *vectorsAt<lanes>(x + step), f3 = *vectorsAt<lanes>(x + 3 * step);
        join<lanes>(f0, f1, f2, f3);
        *vectorsAt<lanes>(x) = f0;
        *vectorsAt<lanes>(x + 2 * step) = f1;
        *vectorsAt<lanes>(x + step) = f2;
        *vectorsAt<lanes>(x + 3 * step) = f3;
        f0 = *vectorsAt<lanes>(y);
        f1 = *vectorsAt<lanes>(y + 2 * step);
        f2 = *vectorsAt<lanes>(y + step);
        f3 = *vectorsAt<lanes>(y + 3 * step);
        joinHalfway<lanes>(f0, f1, f2, f3);
        *vectorsAt<lanes>(y) = f0;
        *vectorsAt<lanes>(y + 2 * step) = f1;
        *vectorsAt<lanes>(y + step) = f2;
        *vectorsAt<lanes>(y + 3 * step) = f3;
    }
}

// A stage in the first `length` elements, which hold whole groups: 4 count elements for each r.
template <int lanes>
[[gnu::always_inline]] static inline void joinAllGroups(Parts d, int length, int count,
                                                        const Twiddles& twiddles) {
    joinEnds<lanes>(d.re, count);
    joinEnds<lanes>(d.im, count);
    for (int group = 2; group < length / (4 * count); group *= 2) {
        joinMirrorImages<lanes>(d, group, 2 * group - 1, group / 2, count, twiddles);
    }
}

static constexpr int four = 4;

// A stage in which `size` elements belong to each r, except the last: in the first `length`
// elements, or in two mirrored blocks of them. Blocks of four take vectors of four.
template <int lanes>
[[gnu::always_inline]] static inline void stageOfGroups(Parts d, int length, int size,
                                                        const Twiddles& twiddles) {
    if (lanes > four && size == 4 * four) {
        joinAllGroups<std::min(lanes, four)>(d, length, four, twiddles);
    } else {
        joinAllGroups<lanes>(d, length, size / 4, twiddles);
    }
}
template <int lanes>
[[gnu::always_inline]] static inline void stageOfBlocks(Parts d, int low, int high, int length,
                                                        int size, const Twiddles& twiddles) {
    const int first = low / size, last = (high + length) / size - 1, pairs = length / size;
    if (lanes > four && size == 4 * four) {
        joinMirrorImages<std::min(lanes, four)>(d, first, last, pairs, four, twiddles);
    } else {
        joinMirrorImages<lanes>(d, first, last, pairs, size / 4, twiddles);
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
