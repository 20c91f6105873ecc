#include "kernels/hartleyButterflies.h"
#include "kernels/hartleyFoldParts.h"
#include "kernels/hartleyFoldTile.h"
#include "kernels/vectors.h"

#include <algorithm>
#include <cstddef>
#include <type_traits>

namespace kernels::fold {

// A pair of tiles. Each takes rows times columns in the spectrum, from `place` on, the upper one in
// the order of the lower one. By turns it is the lower tile and the upper one whose rows are below
// half of their group.
template <int lanes, int rows, typename Use>
[[gnu::always_inline]] static inline void throughPair(Parts d, std::ptrdiff_t lowest,
                                                      std::ptrdiff_t highest, std::ptrdiff_t place,
                                                      const Twiddles& twiddles,
                                                      const Use& spectrum) {
    const Columns lowAt{lowest, d.distance(lowest), rows};
    const Columns highAt{highest, d.distance(highest), -rows};
    Tile<rows> low, high;
    const std::ptrdiff_t upperPlace = place + std::ptrdiff_t{rows} * columns;
#pragma GCC unroll 1
    for (int column = 0; column < columns; column += lanes) {
#pragma GCC unroll 1
        for (int first = 0; first < rows; first += 8) {
            joinLast<lanes>(d, low, lowAt, first, high, highAt, rows - 4 - first, column, twiddles);
            joinLast<lanes>(d, high, highAt, rows - 8 - first, low, lowAt, first + 4, column,
                            twiddles);
        }
#pragma GCC unroll 1
        for (int i = 0; i < rows; i += 2) {
            const std::ptrdiff_t element = std::ptrdiff_t{columns} * i + column;
            useRows<lanes>(low, i, place + element, high, upperPlace + element, column, spectrum);
            useRows<lanes>(high, rows - 2 - i, upperPlace + element + columns, low,
                           place + element + columns, column, spectrum);
        }
    }
    if constexpr (goesBack<Use>) {
#pragma GCC unroll 1
        for (int column = 0; column < columns; column += lanes) {
#pragma GCC unroll 1
            for (int part = 0; part < 2; ++part) {
                double* f = part == 0 ? d.re : d.im;
                startBack<lanes, rows>(low.parts[part][0] + column, columns);
                startBack<lanes, rows>(high.parts[part][0] + column, columns);
                storePart<lanes>(f, lowAt, low, part, column);
                storePart<lanes>(f, highAt, high, part, column);
            }
        }
    }
}

// The first column, whose groups are shorter than it, one element at a time.
template <int rows>
static void joinColumn(double* f, const Twiddles& twiddles) {
    join<1>(f[0], f[2], f[1], f[3]);
    joinHalfway<1>(f[4], f[6], f[5], f[7]);
    for (int group = 2; group < rows / 4; group *= 2) {
        for (int r = group; r < 2 * group; r += 2) {
            double *x = f + std::ptrdiff_t{4} * r, *y = f + std::ptrdiff_t{4} * (3 * group - 1 - r);
            joinMirrored<1>(x[0], x[2], x[1], x[3], y[0], y[2], y[1], y[3],
                            twiddles.reversedSines[r / 2], twiddles.reversedCosines[r / 2]);
        }
    }
}

template <int rows, typename Use>
static void throughFirstColumn(Parts d, const Twiddles& twiddles, const Use& spectrum,
                               std::ptrdiff_t place) {
    joinColumn<rows>(d.re, twiddles);
    joinColumn<rows>(d.im, twiddles);
    // Elements 0 and n / 2 take no part in the pairing.
    for (int i = 0; i < 2; ++i) {
        if constexpr (goesBack<Use>) {
            multiply<1>(d.re[i], d.im[i], spectrum.re + place + i, spectrum.im + place + i,
                        spectrum.conjugate ? -1.0 : 1.0);
        } else {
            spectrum.re[place + i] = d.re[i];
            spectrum.im[place + i] = d.im[i];
        }
    }
    for (int group = 2; group < rows; group *= 2) {
        for (int i = group; i < 2 * group; i += 2) {
            const int j = 3 * group - 1 - i;
            use<1>(spectrum, d.re[i], d.im[i], d.re[j], d.im[j], place + i, place + j);
        }
    }
    if constexpr (goesBack<Use>) {
        for (double* f : {d.re, d.im}) {
            startBack<1, rows>(f, 1);
            std::reverse(f + rows / 2 + 1, f + rows);
        }
    }
}

// The tiles of two mirrored blocks of `length`, whose elements in the spectrum start at `place`.
template <int lanes, int rows, typename Use>
[[gnu::always_inline]] static inline void throughBlocks(
    std::integral_constant<int, rows> /*rows*/, Parts d, std::ptrdiff_t low, std::ptrdiff_t high,
    int length, std::ptrdiff_t place, const Twiddles& twiddles, const Use& spectrum) {
    constexpr int size = rows * columns;
    high += length - rows;
    for (std::ptrdiff_t i = 0; i < length; i += size) {
        throughPair<std::min(lanes, columns), rows>(d, low + i, high - i, place + 2 * i, twiddles,
                                                    spectrum);
    }
}

FENDRA_VARIANTS(blocksVariant, throughBlocks)

// The groups of one, two and four columns, which are made neighbours of one another. The first of
// them mirrors itself: both tiles hold it.
template <int rows, typename Use>
static void throughShortGroups(Parts d, const Twiddles& twiddles, const Use& spectrum) {
    constexpr int order[] = {4, 5, 2, 1, 1, 3, 6, 7};
    constexpr int size = rows * columns;
    double re[std::size_t{2} * size], im[std::size_t{2} * size];
    double sines[std::size_t{2} * size / 8], cosines[std::size_t{2} * size / 8];
    for (int i = 0; i < 2 * columns; ++i) {
        const std::ptrdiff_t from = std::ptrdiff_t{rows} * order[i];
        std::copy_n(d.re + from, rows, re + i * rows);
        std::copy_n(d.im + from, rows, im + i * rows);
        std::copy_n(twiddles.reversedSines + from / 8, rows / 8, sines + i * rows / 8);
        std::copy_n(twiddles.reversedCosines + from / 8, rows / 8, cosines + i * rows / 8);
    }
    Twiddles ofColumns = twiddles;
    ofColumns.reversedSines = sines;
    ofColumns.reversedCosines = cosines;
    blocksVariant(std::integral_constant<int, rows>(), Parts{re, im, d.pageBits}, std::ptrdiff_t{0},
                  std::ptrdiff_t{size}, size, std::ptrdiff_t{0}, ofColumns, spectrum);
    for (int i = 0; goesBack<Use> && i < 2 * columns; ++i) {
        const std::ptrdiff_t to = std::ptrdiff_t{rows} * order[i];
        std::copy_n(re + i * rows, rows, d.re + to);
        std::copy_n(im + i * rows, rows, d.im + to);
    }
}

template <int rows, typename Use>
static void throughGroup(Parts d, std::ptrdiff_t low, std::ptrdiff_t high, int length, int group,
                         const Twiddles& twiddles, const Use& spectrum) {
    blocksVariant(std::integral_constant<int, rows>(), d, low, high, length,
                  group + 2 * (low - group), twiddles, spectrum);
}

template <int rows, typename Use>
static void throughGroups(Parts d, int length, int n, const Twiddles& twiddles,
                          const Use& spectrum) {
    throughFirstColumn<rows>(d, twiddles, spectrum, n);
    throughShortGroups<rows>(d, twiddles, spectrum);
    for (int group = 2 * rows * columns; group < length; group *= 2) {
        throughGroup<rows>(d, std::ptrdiff_t{group}, std::ptrdiff_t{group} + group / 2, group / 2,
                           group, twiddles, spectrum);
    }
}

template <typename Use>
static void useAll(Parts d, int length, int n, const Twiddles& twiddles, const Use& spectrum) {
    isEven(log2Of(n)) ? throughGroups<16>(d, length, n, twiddles, spectrum)
                      : throughGroups<32>(d, length, n, twiddles, spectrum);
}

template <typename Use>
static void useTwo(Parts d, std::ptrdiff_t low, std::ptrdiff_t high, int length, int group, int n,
                   const Twiddles& twiddles, const Use& spectrum) {
    isEven(log2Of(n)) ? throughGroup<16>(d, low, high, length, group, twiddles, spectrum)
                      : throughGroup<32>(d, low, high, length, group, twiddles, spectrum);
}

void useGroups(Parts d, int length, int n, const Twiddles& twiddles, const Product& product) {
    useAll(d, length, n, twiddles, product);
}
void useGroups(Parts d, int length, int n, const Twiddles& twiddles, const Keeping& keeping) {
    useAll(d, length, n, twiddles, keeping);
}
void useBlocks(Parts d, int low, int high, int length, int group, int n, const Twiddles& twiddles,
               const Product& product) {
    useTwo(d, low, high, length, group, n, twiddles, product);
}
void useBlocks(Parts d, int low, int high, int length, int group, int n, const Twiddles& twiddles,
               const Keeping& keeping) {
    useTwo(d, low, high, length, group, n, twiddles, keeping);
}

}  // namespace kernels::fold
