#pragma once

#include "kernels/vectors.h"

namespace kernels {

// Sine and cosine of angles from -2 pi to 2 pi, in radians.
//
// The angle loses the nearest multiple of pi/2 in three parts (W. J. Cody, W. Waite, Software
// Manual for the Elementary Functions, 1980), which leaves r + d with |r| <= pi/4 and d below its
// last bit. There the power series is summed, |r|^19/19! and |r|^20/20! being below 1e-3 ulp. Only
// the first terms are large enough for their rounding to show: they are taken from the leading 11
// bits of r, where they are exact, and what their sum rounds off is added to the small terms (T. J.
// Dekker, Numer. Math. 18 (1971) 224-242). So a result is wrong by the half ulp of its last sum and
// some hundredths: by 0.512 ulp at most on 1e7 angles q pi/n with q < 2n < 2^30.
//
// Only sums, differences and products are used, so the bits are the same everywhere.

// Of `lanes` angles side by side, or of one.
template <int lanes>
[[gnu::always_inline]] constexpr void sineAndCosine(const Vector<lanes>& angle, Vector<lanes>& sine,
                                                    Vector<lanes>& cosine) {
    using Real = Vector<lanes>;
    // A sum with 1.5 2^52 times a power of two is rounded to a multiple of that power.
    constexpr double wholes = 0x1.8p52, heads = 0x1.8p41;
    // pi/2: fifty bits, the next fifty, the rest.
    constexpr double piHigh = 0x1.921fb54442d18p0, piMiddle = 0x1.1a62633145cp-54,
                     piLow = 0x1.b839a252049c1p-104;
    const Real turns = (angle * 0x1.45f306dc9c883p-1 + wholes) - wholes;
    const Real rest = angle - turns * piHigh, part = turns * piMiddle;
    const Real r = rest - part, taken = rest - r;
    const Real d = ((rest - (r + taken)) + (taken - part)) - turns * piLow;

    const Real head = (r + heads) - heads, tail = r - head;
    const Real headSquare = head * head, square = r * r;

    // Factors of few bits: -1/6 = third + 1/3072, 1/24 = fourth - 1/3072.
    constexpr double third = -171.0 / 1024, fourth = 43.0 / 1024;
    const Real cube = third * headSquare * head, sineSum = r + cube;
    const Real parabola = 1.0 - 0.5 * headSquare, power = fourth * headSquare * headSquare;
    const Real cosineSum = parabola + power;

    // The other terms, after r^3 and r^4: 1/5!, -1/7!, .. and -1/6!, 1/8!, ..
    constexpr double odd[] = {
        1 / 120.0,        -1 / 5040.0,          1 / 362880.0,         -1 / 39916800.0,
        1 / 6227020800.0, -1 / 1307674368000.0, 1 / 355687428096000.0};
    constexpr double even[] = {
        -1 / 720.0,         1 / 40320.0,          -1 / 3628800.0,         1 / 479001600.0,
        -1 / 87178291200.0, 1 / 20922789888000.0, -1 / 6402373705728000.0};
    Real oddSum{}, evenSum{};
    for (int i = 6; i >= 0; --i) {
        oddSum = square * (oddSum + odd[i]);
        evenSum = square * (evenSum + even[i]);
    }
    const Real s =
        sineSum + (((r - sineSum) + cube) + (third * tail * (square + r * head + headSquare) +
                                             (r * square * (1 / 3072.0 + oddSum) + d * cosineSum)));
    const Real c = cosineSum + (((parabola - cosineSum) + power) +
                                (tail * (r + head) * (fourth * (square + headSquare) - 0.5) +
                                 (square * square * (evenSum - 1 / 3072.0) - d * sineSum)));

    // The turns without whole rounds, -2 to 2.
    const Real quarter = turns - 4.0 * ((0.25 * turns + wholes) - wholes);
    const Real distance = quarter * quarter;
    sine = distance == 1.0 ? c : s;
    cosine = distance == 1.0 ? s : c;
    sine = distance == 4.0 ? -sine : sine;
    cosine = distance == 4.0 ? -cosine : cosine;
    sine = quarter == -1.0 ? -sine : sine;
    cosine = quarter == 1.0 ? -cosine : cosine;
    sine = angle == 0.0 ? angle : sine;  // with the sign of a zero
}

constexpr double sine(double angle) {
    double s = 0.0, c = 0.0;
    sineAndCosine<1>(angle, s, c);
    return s;
}

constexpr double cosine(double angle) {
    double s = 0.0, c = 0.0;
    sineAndCosine<1>(angle, s, c);
    return c;
}

// Those of count angles. The three arrays are apart.
void sinesAndCosines(const double* angles, int count, double* sines, double* cosines);

namespace plain {
void sinesAndCosines(const double* angles, int count, double* sines, double* cosines);
}

}  // namespace kernels
