#pragma once

#include "kernels/vectors.h"

#include <cstddef>

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

// Lane j of vector i and lane i of vector j change places. An element's index is i and then j in
// binary; each round turns it round by one bit. Four lanes take pairs within half a register first,
// and then the halves: no shuffle crosses lanes that need not.
template <int lanes>
[[gnu::always_inline]] inline void transpose(Vector<lanes> (&v)[std::size_t{lanes}]) {
    if constexpr (lanes == 4) {
        const Vector<4> even01 = __builtin_shufflevector(v[0], v[1], 0, 4, 2, 6);
        const Vector<4> odd01 = __builtin_shufflevector(v[0], v[1], 1, 5, 3, 7);
        const Vector<4> even23 = __builtin_shufflevector(v[2], v[3], 0, 4, 2, 6);
        const Vector<4> odd23 = __builtin_shufflevector(v[2], v[3], 1, 5, 3, 7);
        v[0] = __builtin_shufflevector(even01, even23, 0, 1, 4, 5);
        v[1] = __builtin_shufflevector(odd01, odd23, 0, 1, 4, 5);
        v[2] = __builtin_shufflevector(even01, even23, 2, 3, 6, 7);
        v[3] = __builtin_shufflevector(odd01, odd23, 2, 3, 6, 7);
    } else {
        constexpr int half = lanes / 2;
        Vector<lanes> turned[std::size_t{lanes}];
#pragma GCC unroll 4
        for (int round = 1; round < lanes; round *= 2) {
#pragma GCC unroll 8
            for (int i = 0; i < half; ++i) {
                interleave<lanes>(v[i], v[i + half], turned[2 * i], turned[2 * i + 1]);
            }
#pragma GCC unroll 8
            for (int i = 0; i < lanes; ++i) {
                v[i] = turned[i];
            }
        }
    }
}

}  // namespace kernels
