#pragma once

#include "kernels/hartleyTables.h"
#include "kernels/vectors.h"

#include <bit>

namespace kernels {

// The butterflies of a block, four quarters that become one: f0 to f3 are the elements at one
// offset into the quarters, g0 to g3 those at its mirror image, the length of a quarter less the
// offset. Vectors take several offsets, or several blocks, side by side.

constexpr double sqrtTwo = 1.4142135623730951;

// At offset 0.
template <int lanes>
[[gnu::always_inline]] inline void join(Vector<lanes>& f0, Vector<lanes>& f1, Vector<lanes>& f2,
                                        Vector<lanes>& f3) {
    const Vector<lanes> p0 = f0 + f1, p1 = f0 - f1, p2 = f2 + f3, p3 = f2 - f3;
    f0 = p0 + p2;
    f1 = p1 + p3;
    f2 = p0 - p2;
    f3 = p1 - p3;
}

// At half a quarter, its own mirror image.
template <int lanes>
[[gnu::always_inline]] inline void joinHalfway(Vector<lanes>& g0, Vector<lanes>& g1,
                                               Vector<lanes>& g2, Vector<lanes>& g3) {
    const Vector<lanes> p0 = g0 + g1, p1 = g0 - g1, p2 = sqrtTwo * g2, p3 = sqrtTwo * g3;
    g0 = p0 + p2;
    g1 = p1 + p3;
    g2 = p0 - p2;
    g3 = p1 - p3;
}

// At any other offset: (s1, c1) is its twiddle, (s2, c2) the double angle.
template <int lanes>
[[gnu::always_inline]] inline void joinMirrored(Vector<lanes>& f0, Vector<lanes>& f1,
                                                Vector<lanes>& f2, Vector<lanes>& f3,
                                                Vector<lanes>& g0, Vector<lanes>& g1,
                                                Vector<lanes>& g2, Vector<lanes>& g3,
                                                const Vector<lanes>& s1, const Vector<lanes>& c1) {
    const Vector<lanes> c2 = c1 * c1 - s1 * s1, s2 = 2.0 * s1 * c1;
    Vector<lanes> a = c2 * f1 + s2 * g1, d = s2 * f1 - c2 * g1;
    const Vector<lanes> p0 = f0 + a, p1 = f0 - a, q0 = g0 + d, q1 = g0 - d;
    a = c2 * f3 + s2 * g3;
    d = s2 * f3 - c2 * g3;
    const Vector<lanes> p2 = f2 + a, p3 = f2 - a, q2 = g2 + d, q3 = g2 - d;
    a = c1 * p2 + s1 * q3;
    d = s1 * p2 - c1 * q3;
    f0 = p0 + a;
    f2 = p0 - a;
    g1 = q1 + d;
    g3 = q1 - d;
    a = s1 * q2 + c1 * p3;
    d = c1 * q2 - s1 * p3;
    g0 = q0 + a;
    g2 = q0 - a;
    f1 = p1 + d;
    f3 = p1 - d;
}

// The first pass for an even log2 n: a transform of length 4, of elements in bit-reversed order.
template <int lanes>
[[gnu::always_inline]] inline void transformFour(Vector<lanes>* a) {
    join<lanes>(a[0], a[1], a[2], a[3]);
}

// The first pass for an odd log2 n: a transform of length 8.
template <int lanes>
[[gnu::always_inline]] inline void transformEight(Vector<lanes>* a) {
    join<lanes>(a[0], a[1], a[2], a[3]);
    const Vector<lanes> p2 = (a[4] + a[5]) + (a[6] + a[7]), p3 = (a[4] + a[5]) - (a[6] + a[7]);
    const Vector<lanes> q2 = sqrtTwo * (a[4] - a[5]), q3 = sqrtTwo * (a[6] - a[7]);
    a[4] = a[0] - p2;
    a[5] = a[1] - q2;
    a[6] = a[2] - p3;
    a[7] = a[3] - q3;
    a[0] += p2;
    a[1] += q2;
    a[2] += p3;
    a[3] += q3;
}

// Elements of one index into 16 successive ones, in bit-reversed order.
constexpr int sixteen = 16;
constexpr int reversedOfSixteen[sixteen] = {0, 8, 4, 12, 2, 10, 6, 14, 1, 9, 5, 13, 3, 11, 7, 15};

// The first passes of 16 successive elements: a transform of length 16 for an even log2 n, two of
// length 8 for an odd one.
template <int lanes, bool inFours>
[[gnu::always_inline]] inline void transformSixteen(Vector<lanes>* a) {
    if constexpr (inFours) {
#pragma GCC unroll 4
        for (int i = 0; i < sixteen; i += 4) {
            transformFour<lanes>(a + i);
        }
        join<lanes>(a[0], a[4], a[8], a[12]);
        joinHalfway<lanes>(a[2], a[6], a[10], a[14]);
        const Vector<lanes> zero = {}, s1 = zero + sineTable[2], c1 = zero + cosineTable[2];
        joinMirrored<lanes>(a[1], a[5], a[9], a[13], a[3], a[7], a[11], a[15], s1, c1);
    } else {
        transformEight<lanes>(a);
        transformEight<lanes>(a + 8);
    }
}

inline int log2Of(int n) {
    return std::countr_zero(static_cast<unsigned>(n));
}

inline bool isEven(int number) {
    return number % 2 == 0;
}

}  // namespace kernels
