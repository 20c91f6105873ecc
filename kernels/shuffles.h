#pragma once

#include "kernels/vectors.h"

#include <utility>

namespace kernels {

// Lanes in another order.

// The last lane comes first.
template <int lanes>
[[gnu::always_inline]] inline void reverseLanes(Vector<lanes>& v) {
    if constexpr (lanes == 2) {
        v = __builtin_shufflevector(v, v, 1, 0);
    } else if constexpr (lanes == 4) {
        v = __builtin_shufflevector(v, v, 3, 2, 1, 0);
    } else {
        v = __builtin_shufflevector(v, v, 7, 6, 5, 4, 3, 2, 1, 0);
    }
}

// The first lane of v becomes that of the other.
template <int lanes>
[[gnu::always_inline]] inline void takeFirstLane(Vector<lanes>& v, const Vector<lanes>& other) {
    [&]<int... lane>(std::integer_sequence<int, lane...>) __attribute__((always_inline)) {
        v = __builtin_shufflevector(v, other, (lane == 0 ? lanes : lane)...);
    }
    (std::make_integer_sequence<int, lanes>());
}

// The lanes of a and b by turns: a0 b0 a1 b1 ..., its first half in low, its second half in high,
// which are neither a nor b.
template <int lanes>
[[gnu::always_inline]] inline void interleave(const Vector<lanes>& a, const Vector<lanes>& b,
                                              Vector<lanes>& low, Vector<lanes>& high) {
    if constexpr (lanes == 2) {
        low = __builtin_shufflevector(a, b, 0, 2);
        high = __builtin_shufflevector(a, b, 1, 3);
    } else if constexpr (lanes == 4) {
        low = __builtin_shufflevector(a, b, 0, 4, 1, 5);
        high = __builtin_shufflevector(a, b, 2, 6, 3, 7);
    } else {
        low = __builtin_shufflevector(a, b, 0, 8, 1, 9, 2, 10, 3, 11);
        high = __builtin_shufflevector(a, b, 4, 12, 5, 13, 6, 14, 7, 15);
    }
}

// The lanes of a that have the bit `distance` in their number change places with those of b that
// have not.
template <int lanes, int distance>
[[gnu::always_inline]] inline void exchangeLanes(Vector<lanes>& a, Vector<lanes>& b) {
    [&]<int... lane>(std::integer_sequence<int, lane...>) __attribute__((always_inline)) {
        const Vector<lanes> low = __builtin_shufflevector(
            a, b, ((lane & distance) == 0 ? lane : lanes + lane - distance)...);
        b = __builtin_shufflevector(a, b,
                                    ((lane & distance) == 0 ? lane + distance : lanes + lane)...);
        a = low;
    }
    (std::make_integer_sequence<int, lanes>());
}

// Lane j of vector i and lane i of vector j change places, for all bits of i and j in turn.
template <int lanes, int distance = 1>
[[gnu::always_inline]] inline void transpose(Vector<lanes>* v) {
#pragma GCC unroll 8
    for (int i = 0; i < lanes; ++i) {
        if ((i & distance) == 0) {
            exchangeLanes<lanes, distance>(v[i], v[i + distance]);
        }
    }
    if constexpr (2 * distance < lanes) {
        transpose<lanes, 2 * distance>(v);
    }
}

}  // namespace kernels
