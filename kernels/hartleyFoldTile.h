#pragma once

#include "kernels/hartleyButterflies.h"
#include "kernels/hartleyFoldParts.h"
#include "kernels/hartleyTables.h"
#include "kernels/shuffles.h"
#include "kernels/vectors.h"

#include <cstddef>
#include <type_traits>

namespace kernels::fold {

// The spectrum is made in tiles, pairs of mirrored ones, which leave the last stage, go through
// pairing, product and pairing, and take the first pass and one stage on their way back. A tile has
// a column for each of four indices divisible by `rows`, and in it the elements from there on. Row
// i of the lower tile mirrors row rows - 1 - i of the upper one.
constexpr int columns = 4;

template <int rows>
struct Tile {
    alignas(64) double parts[2][std::size_t{rows}][columns];
};

// Where the columns of a tile are: neighbours, upwards (step = rows) or downwards (-rows), in one
// page. The first of them, and how far that is from the beginning.
struct Columns {
    std::ptrdiff_t first, start, step;

    [[nodiscard]] std::ptrdiff_t place(int column) const { return first + step * column; }
    [[nodiscard]] std::ptrdiff_t distance(int column) const { return start + step * column; }
};

// Four successive rows of columns, the first of which starts at f.
template <int lanes>
[[gnu::always_inline]] inline void loadRows(const double* f, std::ptrdiff_t step,
                                            Vector<lanes>* rows) {
#pragma GCC unroll 2
    for (int row = 0; row < 4; row += lanes) {
        Vector<lanes> square[std::size_t{lanes}];
#pragma GCC unroll 4
        for (int i = 0; i < lanes; ++i) {
            square[i] = *vectorsAt<lanes>(f + step * i + row);
        }
        transpose<lanes>(square);
#pragma GCC unroll 4
        for (int i = 0; i < lanes; ++i) {
            rows[row + i] = square[i];
        }
    }
}

template <int lanes>
[[gnu::always_inline]] inline void storeRows(double* f, std::ptrdiff_t step,
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
            *vectorsAt<lanes>(f + step * i + row) = square[i];
        }
    }
}

// The last stage of four rows of one tile and their mirror images in the other. `even` has those
// below half of their group.
template <int lanes, int rows>
[[gnu::always_inline]] inline void joinLast(Parts d, Tile<rows>& even, const Columns& evenAt,
                                            int evenRow, Tile<rows>& odd, const Columns& oddAt,
                                            int oddRow, int column, const Twiddles& twiddles) {
    Vector<lanes> s1, c1;
#pragma GCC unroll 4
    for (int i = 0; i < lanes; ++i) {
        const std::ptrdiff_t element = (evenAt.place(column + i) + evenRow) / 8;
        s1[i] = twiddles.reversedSines[element];
        c1[i] = twiddles.reversedCosines[element];
    }
#pragma GCC unroll 2
    for (int part = 0; part < 2; ++part) {
        const double* f = part == 0 ? d.re : d.im;
        Vector<lanes> a[4], b[4];
        loadRows<lanes>(f + evenAt.distance(column) + evenRow, evenAt.step, a);
        loadRows<lanes>(f + oddAt.distance(column) + oddRow, oddAt.step, b);
        joinMirrored<lanes>(a[0], a[2], a[1], a[3], b[0], b[2], b[1], b[3], s1, c1);
#pragma GCC unroll 4
        for (int i = 0; i < 4; ++i) {
            *vectorsAt<lanes>(even.parts[part][evenRow + i] + column) = a[i];
            *vectorsAt<lanes>(odd.parts[part][oddRow + i] + column) = b[i];
        }
    }
}

// Elements i and j = n - i, i below n / 2, of two Hartley spectra become those of the spectrum.
template <int lanes>
[[gnu::always_inline]] inline void pairForth(Vector<lanes>& reI, Vector<lanes>& imI,
                                             Vector<lanes>& reJ, Vector<lanes>& imJ) {
    const Vector<lanes> A = reI + reJ, B = reI - reJ, C = imI + imJ, D = imI - imJ;
    reI = (A - D) * 0.5;
    reJ = (A + D) * 0.5;
    imI = (C + B) * 0.5;
    imJ = (C - B) * 0.5;
}
template <int lanes>
[[gnu::always_inline]] inline void pairBack(Vector<lanes>& reI, Vector<lanes>& imI,
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
[[gnu::always_inline]] inline void multiply(Vector<lanes>& re, Vector<lanes>& im,
                                            const double* factorRe, const double* factorIm,
                                            double sign) {
    const Vector<lanes> c = *vectorsAt<lanes>(factorRe), d = sign * *vectorsAt<lanes>(factorIm);
    const Vector<lanes> real = re * c - im * d;
    im = re * d + im * c;
    re = real;
}

// Elements i and j, whose places in the fixed spectrum are these. Its conjugate has them exchanged.
template <int lanes>
[[gnu::always_inline]] inline void use(const Product& fixed, Vector<lanes>& reI, Vector<lanes>& imI,
                                       Vector<lanes>& reJ, Vector<lanes>& imJ,
                                       std::ptrdiff_t placeI, std::ptrdiff_t placeJ) {
    const double sign = fixed.conjugate ? -1.0 : 1.0;
    const std::ptrdiff_t fromI = fixed.conjugate ? placeJ : placeI;
    const std::ptrdiff_t fromJ = fixed.conjugate ? placeI : placeJ;
    pairForth<lanes>(reI, imI, reJ, imJ);
    multiply<lanes>(reI, imI, fixed.re + fromI, fixed.im + fromI, sign);
    multiply<lanes>(reJ, imJ, fixed.re + fromJ, fixed.im + fromJ, sign);
    pairBack<lanes>(reI, imI, reJ, imJ);
}
template <int lanes>
[[gnu::always_inline]] inline void use(const Keeping& kept, Vector<lanes>& reI, Vector<lanes>& imI,
                                       Vector<lanes>& reJ, Vector<lanes>& imJ,
                                       std::ptrdiff_t placeI, std::ptrdiff_t placeJ) {
    pairForth<lanes>(reI, imI, reJ, imJ);
    *vectorsAt<lanes>(kept.re + placeI) = reI;
    *vectorsAt<lanes>(kept.im + placeI) = imI;
    *vectorsAt<lanes>(kept.re + placeJ) = reJ;
    *vectorsAt<lanes>(kept.im + placeJ) = imJ;
}

// The spectrum of row `row` of one tile, below n / 2, and of its mirror image in the other.
// Places are those of the elements in the spectrum.
template <int lanes, int rows, typename Use>
[[gnu::always_inline]] inline void useRows(Tile<rows>& tile, int row, std::ptrdiff_t place,
                                           Tile<rows>& mirror, std::ptrdiff_t mirrorPlace,
                                           int column, const Use& spectrum) {
    const auto reLowAt = vectorsAt<lanes>(tile.parts[0][row] + column);
    const auto imLowAt = vectorsAt<lanes>(tile.parts[1][row] + column);
    const auto reHighAt = vectorsAt<lanes>(mirror.parts[0][rows - 1 - row] + column);
    const auto imHighAt = vectorsAt<lanes>(mirror.parts[1][rows - 1 - row] + column);
    Vector<lanes> reLow = *reLowAt, imLow = *imLowAt, reHigh = *reHighAt, imHigh = *imHighAt;
    use<lanes>(spectrum, reLow, imLow, reHigh, imHigh, place, mirrorPlace);
    *reLowAt = reLow;
    *imLowAt = imLow;
    *reHighAt = reHigh;
    *imHighAt = imHigh;
}

// The twiddles of the stage that joins transforms of length K, 4 or 8.
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

// The first pass back, of length rows / 4, and the first stage.
template <int lanes, int rows>
[[gnu::always_inline]] inline void startBack(double* f, std::ptrdiff_t step) {
    constexpr int K = rows / 4;
    const auto at = [=](int row) __attribute__((always_inline)) {
        return vectorsAt<lanes>(f + step * row);
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
    Vector<lanes> x[4], y[4];
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
    load(x, 0);
    join<lanes>(x[0], x[1], x[2], x[3]);
    store(x, 0);
    load(x, K / 2);
    joinHalfway<lanes>(x[0], x[1], x[2], x[3]);
    store(x, K / 2);
#pragma GCC unroll 3
    for (int offset = 1; offset < K / 2; ++offset) {
        const Vector<lanes> zero = {};
        const Vector<lanes> s1 = firstTwiddles<K>.sines[offset] - zero;
        const Vector<lanes> c1 = firstTwiddles<K>.cosines[offset] - zero;
        load(x, offset);
        load(y, K - offset);
        joinMirrored<lanes>(x[0], x[1], x[2], x[3], y[0], y[1], y[2], y[3], s1, c1);
        store(x, offset);
        store(y, K - offset);
    }
}

// The columns of a tile, which are transforms of length `rows`, are folded on their way to memory.
template <int lanes, int rows>
[[gnu::always_inline]] inline void storePart(double* f, const Columns& at, const Tile<rows>& tile,
                                             int part, int column) {
#pragma GCC unroll 8
    for (int first = 0; first < rows; first += 4) {
        Vector<lanes> a[4];
#pragma GCC unroll 4
        for (int i = 0; i < 4; ++i) {
            const int slot = first + i, image = 3 * rows / 2 - slot;
            a[i] = *vectorsAt<lanes>(tile.parts[part][slot <= rows / 2 ? slot : image] + column);
        }
        storeRows<lanes>(f + at.distance(column) + first, at.step, a);
    }
}

}  // namespace kernels::fold
