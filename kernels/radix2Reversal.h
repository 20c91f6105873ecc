#pragma once

#include "kernels/radix2Passes.h"
#include "kernels/radix2Twiddles.h"
#include "kernels/shuffles.h"
#include "kernels/vectors.h"

#include <cstddef>

namespace kernels {

// The lowest bits of a number, log2 size of them, in reversed order.
constexpr std::ptrdiff_t reversedBelow(std::ptrdiff_t size, std::ptrdiff_t number) {
    std::ptrdiff_t reversed = 0;
    for (std::ptrdiff_t bit = 1; bit < size; bit *= 2) {
        reversed = 2 * reversed + (number / bit & 1);
    }
    return reversed;
}

// The next number in bit-reversed order: counts from the bit `top` downwards.
inline int nextReversed(int reversed, int top) {
    while ((reversed & top) != 0) {
        reversed ^= top;
        top /= 2;
    }
    return reversed | top;
}

// Takes `lanes` columns of 2^stages rows through the first stages. What is in a column is then put
// side by side in a row, the rows in bit-reversed order of the columns.
template <int lanes, int stages>
[[gnu::always_inline]] inline void turnSquare(Complexes from, std::ptrdiff_t fromRow, Complexes to,
                                              std::ptrdiff_t toRow, double sign) {
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
[[gnu::always_inline]] inline void firstPass(Complexes from, Complexes to, int n, double sign) {
    constexpr int rows = 1 << stages;
    const int columns = n / rows, top = columns / lanes / 2;
    for (int q = 0, other = 0; q < columns; q += lanes, other = nextReversed(other, top)) {
        const std::ptrdiff_t target = other;
        turnSquare<lanes, stages>(from + q, columns, to + target * rows, n / lanes, sign);
    }
}

// In place that goes tile by tile. Of an index, let r be the first three bits, s the last three and
// q those between: a tile is the 8 x 8 elements of one q, and goes to the place of the tile of
// reversed q, its rows r becoming its columns and the other way round, in reversed order. So each
// line of memory is read and written as a whole.
struct ReversedTile {
    alignas(64) double re[64], im[64];
};

template <int lanes, int stages>
[[gnu::always_inline]] inline void turnTile(Complexes from, std::ptrdiff_t fromRow, Complexes to,
                                            std::ptrdiff_t toRow, double sign) {
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
[[gnu::always_inline]] inline void copyTile(const ReversedTile& tile, Complexes to,
                                            std::ptrdiff_t toRow) {
    for (std::ptrdiff_t r = 0; r < 8; ++r) {
        for (std::ptrdiff_t s = 0; s < 8; s += lanes) {
            *vectorsAt<lanes>(to.re + r * toRow + s) = *vectorsAt<lanes>(tile.re + 8 * r + s);
            *vectorsAt<lanes>(to.im + r * toRow + s) = *vectorsAt<lanes>(tile.im + 8 * r + s);
        }
    }
}

template <int lanes, int stages>
[[gnu::always_inline]] inline void firstPassInPlace(Complexes a, int n, double sign) {
    const std::ptrdiff_t row = n / 8;
    const int tiles = n / 64;
    ReversedTile tile;
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

}  // namespace kernels
