#include "kernels/hartleyButterflies.h"
#include "kernels/hartleyFoldParts.h"
#include "kernels/hartleyTables.h"
#include "kernels/shuffles.h"
#include "kernels/vectors.h"

#include <algorithm>
#include <cstddef>
#include <type_traits>

namespace kernels::fold {

// The spectrum is made in tiles, pairs of mirrored ones, which leave the last stage, go through
// pairing, product and pairing, and take the first pass and one stage on their way back. A tile has
// a column for each of four indices divisible by `rows`, and in it the elements from there on. Row
// i of the lower tile mirrors row rows - 1 - i of the upper one.
static constexpr int columns = 4;

namespace {

// Those of the stage that joins transforms of length K, 4 or 8.
template <int K>
struct FirstTwiddles {
    double sines[4] = {}, cosines[4] = {};

    constexpr FirstTwiddles() {
        constexpr std::size_t k = K == 4 ? 2 : 3;
        sines[1] = sineTable[k];
        cosines[1] = cosineTable[k];
        if constexpr (K == 8) {
            sines[2] = sineTable[2];
            cosines[2] = cosineTable[2];
            sines[3] = halfSecantTable[3] * (sineTable[2] + sineTable[1]);
            cosines[3] = halfSecantTable[3] * (cosineTable[2] + cosineTable[1]);
        }
    }
};
template <int K>
constexpr FirstTwiddles<K> firstTwiddles;

template <int rows>
using Tile = double[std::size_t{rows}][columns];

template <int rows>
struct TilePair {
    alignas(64) Tile<rows> lowRe, lowIm, highRe, highIm;
};

// Where the columns are: one after the other.
template <int rows>
struct Neighbours {
    std::ptrdiff_t lowest, highest;

    [[nodiscard]] std::ptrdiff_t low(int column) const {
        return lowest + std::ptrdiff_t{rows} * column;
    }
    [[nodiscard]] std::ptrdiff_t high(int column) const {
        return highest - std::ptrdiff_t{rows} * column;
    }
};

// The groups of one, two and four columns. The first of them mirrors itself: the tiles share it.
template <int rows>
struct ShortGroups {
    [[nodiscard]] static std::ptrdiff_t low(int column) {
        constexpr int at[columns] = {4, 5, 2, 1};
        return std::ptrdiff_t{rows} * at[column];
    }
    [[nodiscard]] static std::ptrdiff_t high(int column) {
        constexpr int at[columns] = {7, 6, 3, 1};
        return std::ptrdiff_t{rows} * at[column];
    }
};

}  // namespace

// Four successive rows of the columns that start at the given places.
template <int lanes, typename Place>
[[gnu::always_inline]] static inline void loadRows(const double* f, const Place& place,
                                                   Vector<lanes>* rows) {
#pragma GCC unroll 2
    for (int row = 0; row < 4; row += lanes) {
        Vector<lanes> square[std::size_t{lanes}];
#pragma GCC unroll 4
        for (int i = 0; i < lanes; ++i) {
            square[i] = *vectorsAt<lanes>(f + place(i) + row);
        }
        transpose<lanes>(square);
#pragma GCC unroll 4
        for (int i = 0; i < lanes; ++i) {
            rows[row + i] = square[i];
        }
    }
}

template <int lanes, typename Place>
[[gnu::always_inline]] static inline void storeRows(double* f, const Place& place,
                                                    const Vector<lanes>* rows) {
#pragma GCC unroll 2
    for (int row = 0; row < 4; row += lanes) {
        Vector<lanes> square[std::size_t{lanes}];
#pragma GCC unroll 4
        for (int i = 0; i < lanes; ++i) {
            square[i] = rows[row + i];
        }
        transpose<lanes>(square);
#pragma GCC unroll 4
        for (int i = 0; i < lanes; ++i) {
            *vectorsAt<lanes>(f + place(i) + row) = square[i];
        }
    }
}

// Elements i and j = n - i, i below n / 2, of two Hartley spectra become those of the spectrum.
template <int lanes>
[[gnu::always_inline]] static inline void pairForth(Vector<lanes>& reI, Vector<lanes>& imI,
                                                    Vector<lanes>& reJ, Vector<lanes>& imJ) {
    const Vector<lanes> A = reI + reJ, B = reI - reJ, C = imI + imJ, D = imI - imJ;
    reI = (A - D) * 0.5;
    reJ = (A + D) * 0.5;
    imI = (C + B) * 0.5;
    imJ = (C - B) * 0.5;
}
template <int lanes>
[[gnu::always_inline]] static inline void pairBack(Vector<lanes>& reI, Vector<lanes>& imI,
                                                   Vector<lanes>& reJ, Vector<lanes>& imJ) {
    const Vector<lanes> A = reI + reJ, B = reI - reJ, C = imI + imJ, D = imI - imJ;
    reI = (A + D) * 0.5;
    reJ = (A - D) * 0.5;
    imI = (C - B) * 0.5;
    imJ = (C + B) * 0.5;
}

template <typename Use>
constexpr bool goesBack = std::is_same_v<Use, Product>;

template <int lanes>
[[gnu::always_inline]] static inline void multiply(Vector<lanes>& re, Vector<lanes>& im,
                                                   const double* factorRe, const double* factorIm,
                                                   double sign) {
    const Vector<lanes> c = *vectorsAt<lanes>(factorRe), d = sign * *vectorsAt<lanes>(factorIm);
    const Vector<lanes> real = re * c - im * d;
    im = re * d + im * c;
    re = real;
}

// Elements i and j, whose places in the fixed spectrum are these. Its conjugate has them exchanged.
template <int lanes>
[[gnu::always_inline]] static inline void use(const Product& fixed, Vector<lanes>& reI,
                                              Vector<lanes>& imI, Vector<lanes>& reJ,
                                              Vector<lanes>& imJ, std::ptrdiff_t placeI,
                                              std::ptrdiff_t placeJ) {
    const double sign = fixed.conjugate ? -1.0 : 1.0;
    const std::ptrdiff_t fromI = fixed.conjugate ? placeJ : placeI;
    const std::ptrdiff_t fromJ = fixed.conjugate ? placeI : placeJ;
    pairForth<lanes>(reI, imI, reJ, imJ);
    multiply<lanes>(reI, imI, fixed.re + fromI, fixed.im + fromI, sign);
    multiply<lanes>(reJ, imJ, fixed.re + fromJ, fixed.im + fromJ, sign);
    pairBack<lanes>(reI, imI, reJ, imJ);
}
template <int lanes>
[[gnu::always_inline]] static inline void use(const Keeping& kept, Vector<lanes>& reI,
                                              Vector<lanes>& imI, Vector<lanes>& reJ,
                                              Vector<lanes>& imJ, std::ptrdiff_t placeI,
                                              std::ptrdiff_t placeJ) {
    pairForth<lanes>(reI, imI, reJ, imJ);
    *vectorsAt<lanes>(kept.re + placeI) = reI;
    *vectorsAt<lanes>(kept.im + placeI) = imI;
    *vectorsAt<lanes>(kept.re + placeJ) = reJ;
    *vectorsAt<lanes>(kept.im + placeJ) = imJ;
}

// The last stage of rows `first` to first + 3 of the lower tile and their mirror images.
template <int lanes, int rows, bool lowIsEven, typename Columns>
[[gnu::always_inline]] static inline void joinLast(const double* f, const Columns& at, int first,
                                                   int column, const Vector<lanes>& s1,
                                                   const Vector<lanes>& c1, Tile<rows>& lowTile,
                                                   Tile<rows>& highTile) {
    Vector<lanes> low[4], high[4];
    loadRows<lanes>(
        f, [=](int i) { return at.low(column + i) + first; }, low);
    loadRows<lanes>(
        f, [=](int i) { return at.high(column + i) + rows - 4 - first; }, high);
    Vector<lanes>*even = lowIsEven ? low : high, *odd = lowIsEven ? high : low;
    joinMirrored<lanes>(even[0], even[2], even[1], even[3], odd[0], odd[2], odd[1], odd[3], s1, c1);
#pragma GCC unroll 4
    for (int i = 0; i < 4; ++i) {
        *vectorsAt<lanes>(lowTile[first + i] + column) = low[i];
        *vectorsAt<lanes>(highTile[rows - 4 - first + i] + column) = high[i];
    }
}

template <int lanes, int rows, bool lowIsEven, typename Columns>
[[gnu::always_inline]] static inline void loadTiles(Parts d, const Columns& at, int first,
                                                    int column, const Twiddles& twiddles,
                                                    TilePair<rows>& tiles) {
    Vector<lanes> s1, c1;
#pragma GCC unroll 4
    for (int i = 0; i < lanes; ++i) {
        const std::ptrdiff_t even =
            (lowIsEven ? at.low(column + i) + first : at.high(column + i) + rows - 4 - first) / 8;
        s1[i] = twiddles.reversedSines[even];
        c1[i] = twiddles.reversedCosines[even];
    }
    joinLast<lanes, rows, lowIsEven>(d.re, at, first, column, s1, c1, tiles.lowRe, tiles.highRe);
    joinLast<lanes, rows, lowIsEven>(d.im, at, first, column, s1, c1, tiles.lowIm, tiles.highIm);
}

// The spectrum of rows i of the lower tile and rows - 1 - i of the upper one, of which the lower is
// below n / 2. Each tile takes rows times columns in the spectrum, from `place` on, the upper one
// in the order of the lower one.
template <int lanes, int rows, typename Use>
[[gnu::always_inline]] static inline void useRows(TilePair<rows>& tiles, int i, int column,
                                                  const Use& spectrum, std::ptrdiff_t place,
                                                  bool lowIsI) {
    const auto reLowAt = vectorsAt<lanes>(tiles.lowRe[i] + column);
    const auto imLowAt = vectorsAt<lanes>(tiles.lowIm[i] + column);
    const auto reHighAt = vectorsAt<lanes>(tiles.highRe[rows - 1 - i] + column);
    const auto imHighAt = vectorsAt<lanes>(tiles.highIm[rows - 1 - i] + column);
    Vector<lanes> reLow = *reLowAt, imLow = *imLowAt, reHigh = *reHighAt, imHigh = *imHighAt;
    const std::ptrdiff_t low = place + std::ptrdiff_t{columns} * i + column,
                         high = low + std::ptrdiff_t{rows} * columns;
    if (lowIsI) {
        use<lanes>(spectrum, reLow, imLow, reHigh, imHigh, low, high);
    } else {
        use<lanes>(spectrum, reHigh, imHigh, reLow, imLow, high, low);
    }
    *reLowAt = reLow;
    *imLowAt = imLow;
    *reHighAt = reHigh;
    *imHighAt = imHigh;
}

// The first pass back, of length rows / 4, and the first stage.
template <int lanes, int rows, typename Row>
[[gnu::always_inline]] static inline void startBack(const Row& row) {
    constexpr int K = rows / 4;
    const auto at = [&](int i) __attribute__((always_inline)) {
        return vectorsAt<lanes>(row(i));
    };
#pragma GCC unroll 4
    for (int first = 0; first < rows; first += K) {
        Vector<lanes> a[std::size_t{K}];
#pragma GCC unroll 8
        for (int i = 0; i < K; ++i) {
            a[i] = *at(first + i);
        }
        if constexpr (K == 4) {
            transformFour<lanes>(a);
        } else {
            transformEight<lanes>(a);
        }
#pragma GCC unroll 8
        for (int i = 0; i < K; ++i) {
            *at(first + i) = a[i];
        }
    }
    Vector<lanes> f[4], g[4];
    const auto load = [&](Vector<lanes>* v, int offset) {
#pragma GCC unroll 4
        for (int q = 0; q < 4; ++q) {
            v[q] = *at(offset + q * K);
        }
    };
    const auto store = [&](const Vector<lanes>* v, int offset) {
#pragma GCC unroll 4
        for (int q = 0; q < 4; ++q) {
            *at(offset + q * K) = v[q];
        }
    };
    load(f, 0);
    join<lanes>(f[0], f[1], f[2], f[3]);
    store(f, 0);
    load(f, K / 2);
    joinHalfway<lanes>(f[0], f[1], f[2], f[3]);
    store(f, K / 2);
#pragma GCC unroll 3
    for (int offset = 1; offset < K / 2; ++offset) {
        const Vector<lanes> zero = {};
        const Vector<lanes> s1 = firstTwiddles<K>.sines[offset] - zero;
        const Vector<lanes> c1 = firstTwiddles<K>.cosines[offset] - zero;
        load(f, offset);
        load(g, K - offset);
        joinMirrored<lanes>(f[0], f[1], f[2], f[3], g[0], g[1], g[2], g[3], s1, c1);
        store(f, offset);
        store(g, K - offset);
    }
}

template <int lanes, int rows, typename Columns>
[[gnu::always_inline]] static inline void storeTile(double* f, const Columns& at,
                                                    const Tile<rows>& tile, int column, bool high) {
    for (int first = 0; first < rows; first += 4) {
        Vector<lanes> a[4];
#pragma GCC unroll 4
        for (int i = 0; i < 4; ++i) {
            a[i] = *vectorsAt<lanes>(tile[first + i] + column);
        }
        storeRows<lanes>(
            f, [=](int i) { return (high ? at.high(column + i) : at.low(column + i)) + first; }, a);
    }
}

template <int lanes, int rows, typename Columns, typename Use>
[[gnu::always_inline]] static inline void throughTiles(Parts d, const Columns& at,
                                                       std::ptrdiff_t place,
                                                       const Twiddles& twiddles,
                                                       const Use& spectrum) {
    TilePair<rows> tiles;
#pragma GCC unroll 1
    for (int column = 0; column < columns; column += lanes) {
#pragma GCC unroll 1
        for (int first = 0; first < rows; first += 8) {
            loadTiles<lanes, rows, true>(d, at, first, column, twiddles, tiles);
            loadTiles<lanes, rows, false>(d, at, first + 4, column, twiddles, tiles);
        }
#pragma GCC unroll 1
        for (int i = 0; i < rows; i += 2) {
            useRows<lanes, rows>(tiles, i, column, spectrum, place, true);
            useRows<lanes, rows>(tiles, i + 1, column, spectrum, place, false);
        }
    }
    if constexpr (goesBack<Use>) {
#pragma GCC unroll 1
        for (int column = 0; column < columns; column += lanes) {
            startBack<lanes, rows>([&](int row) { return tiles.lowRe[row] + column; });
            startBack<lanes, rows>([&](int row) { return tiles.lowIm[row] + column; });
            startBack<lanes, rows>([&](int row) { return tiles.highRe[row] + column; });
            startBack<lanes, rows>([&](int row) { return tiles.highIm[row] + column; });
            storeTile<lanes, rows>(d.re, at, tiles.lowRe, column, false);
            storeTile<lanes, rows>(d.im, at, tiles.lowIm, column, false);
            storeTile<lanes, rows>(d.re, at, tiles.highRe, column, true);
            storeTile<lanes, rows>(d.im, at, tiles.highIm, column, true);
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
        startBack<1, rows>([=](int row) { return d.re + row; });
        startBack<1, rows>([=](int row) { return d.im + row; });
    }
}

// The tiles of two mirrored blocks of `length`.
template <int lanes, int rows, typename Use>
[[gnu::always_inline]] static inline void throughBlocks(std::integral_constant<int, rows> /*rows*/,
                                                        Parts d, std::ptrdiff_t low,
                                                        std::ptrdiff_t high, int length, int group,
                                                        const Twiddles& twiddles,
                                                        const Use& spectrum) {
    constexpr int size = rows * columns;
    high += length - rows;
    for (int i = 0; i < length; i += size) {
        throughTiles<std::min(lanes, columns), rows>(d, Neighbours<rows>{low + i, high - i},
                                                     group + 2 * (low + i - group), twiddles,
                                                     spectrum);
    }
}

template <int lanes, int rows, typename Use>
[[gnu::always_inline]] static inline void throughShortGroups(
    std::integral_constant<int, rows> /*rows*/, Parts d, const Twiddles& twiddles,
    const Use& spectrum) {
    throughTiles<std::min(lanes, columns), rows>(d, ShortGroups<rows>(), 0, twiddles, spectrum);
}

FENDRA_VARIANTS(blocksVariant, throughBlocks)
FENDRA_VARIANTS(shortGroupsVariant, throughShortGroups)

template <int rows, typename Use>
static void throughGroups(std::integral_constant<int, rows> tileRows, Parts d, int length, int n,
                          const Twiddles& twiddles, const Use& spectrum) {
    throughFirstColumn<rows>(d, twiddles, spectrum, n);
    shortGroupsVariant(tileRows, d, twiddles, spectrum);
    for (int group = 2 * rows * columns; group < length; group *= 2) {
        blocksVariant(tileRows, d, std::ptrdiff_t{group}, std::ptrdiff_t{group} + group / 2,
                      group / 2, group, twiddles, spectrum);
    }
}

static constexpr std::integral_constant<int, 16> sixteenRows;
static constexpr std::integral_constant<int, 32> thirtyTwoRows;

template <typename Use>
static void useAll(Parts d, int length, int n, const Twiddles& twiddles, const Use& spectrum) {
    isEven(log2Of(n)) ? throughGroups(sixteenRows, d, length, n, twiddles, spectrum)
                      : throughGroups(thirtyTwoRows, d, length, n, twiddles, spectrum);
}

template <typename Use>
static void useTwo(Parts d, std::ptrdiff_t low, std::ptrdiff_t high, int length, int group, int n,
                   const Twiddles& twiddles, const Use& spectrum) {
    if (isEven(log2Of(n))) {
        blocksVariant(sixteenRows, d, low, high, length, group, twiddles, spectrum);
    } else {
        blocksVariant(thirtyTwoRows, d, low, high, length, group, twiddles, spectrum);
    }
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
