#pragma once

#include "kernels/shuffles.h"
#include "kernels/trigonometry.h"
#include "kernels/vectors.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <numbers>
#include <utility>

namespace kernels {

// The twiddles of the stages of a power-of-two transform, each as the recurrence of its stage gives
// it: (ur, ui) = exp(i pi j / half), j ascending, from cosine and sine of pi / half.

// A step of the recurrence waits some 6 cycles for the step before: the twiddles of the last stage
// alone, one after the other, would take longer than everything else. So those of a stage run in 16
// parts side by side, from starts that the recurrence has found once.
struct Stage {
    static constexpr int parts = 16;
    double cosine, sine;
    double re[parts], im[parts];  // twiddle p half / 16; p itself in a shorter stage
};

constexpr Stage stageOf(int half) {
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
inline constexpr Stage shortStage = stageOf(1 << log2half);

template <std::size_t... log2halves>
constexpr auto allShortStages(std::index_sequence<log2halves...> /*unused*/) {
    return std::array{shortStage<log2halves>...};
}
constexpr auto shortStages = allShortStages(std::make_index_sequence<17>());

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

// The twiddles of all stages whose half is below `size`: that of stage `half` and index j at half +
// j. Where they are in the first caches, reading them is faster than any chain.
struct TwiddleTable {
    static constexpr int size = 2048;
    double re[size] = {}, forwardIm[size] = {}, inverseIm[size] = {};  // sign -1 and 1
};

constexpr TwiddleTable makeTwiddleTable() {
    TwiddleTable table;
    for (int half = 1; half < TwiddleTable::size; half *= 2) {
        const double theta = std::numbers::pi / half, c = cosine(theta), s = sine(theta);
        double ur = 1.0, ui = 0.0;
        for (int j = half; j < 2 * half; ++j) {
            table.re[j] = ur;
            table.forwardIm[j] = 0.0 - ui;  // never a negative zero
            table.inverseIm[j] = ui;
            const double next = c * ur - s * ui;
            ui = c * ui + s * ur;
            ur = next;
        }
    }
    return table;
}
constexpr TwiddleTable twiddleTable = makeTwiddleTable();

// Takes all chains on by `columns` twiddles.
template <int lanes, int stages>
[[gnu::always_inline]] inline void advance(Chains<stages>& chains) {
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

}  // namespace kernels
