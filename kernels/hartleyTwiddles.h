#pragma once

#include "kernels/hartleyTables.h"
#include "kernels/shuffles.h"
#include "kernels/vectors.h"

#include <bit>
#include <cstddef>

namespace kernels {

// The twiddles of the stage of a Hartley transform that joins transforms of length 2^k: sine and
// cosine of t pi / 2^(k + 1) for t = 1 .. 2^(k - 1).

// Buneman's recursion (Proc. IEEE 75 (1987) 1434-1435): starts at t = 0, next() steps t on. Each
// row of the work tables holds the pair that is due next for the values of t with the same number
// of trailing zeros.
class TwiddleRecursion {
public:
    double sine = 0.0, cosine = 1.0;

    explicit TwiddleRecursion(int stage) : k(stage) {}

    void next() {
        ++t;
        const int zeros = __builtin_ctz(t);
        const auto i = static_cast<std::size_t>(k - zeros);
        sine = sineWork[i];
        cosine = cosineWork[i];
        if (i > 1) {
            int bit = zeros + 2;
            while ((t >> bit & 1U) != 0) {
                ++bit;
            }
            const auto j = static_cast<std::size_t>(k - bit);
            sineWork[i] = halfSecantTable[i] * (sineWork[i - 1] + sineWork[j]);
            cosineWork[i] = halfSecantTable[i] * (cosineWork[i - 1] + cosineWork[j]);
        }
    }

private:
    int k;
    unsigned t = 0;
    HartleyTable sineWork = sineTable;
    HartleyTable cosineWork = cosineTable;
};

// The same values in another order, many at a time. With d the largest power of two that divides t,
// the recursion makes the pair at t from those at t - d and t + d, except at t = d, where it takes
// that of the tables. For t a multiple of 2^m, rows and values in stage k are those of t / 2^m in
// stage k - m. So the recursion of an earlier stage steps through the multiples of a power of two,
// and the run of pairs between two of them is made by halving their distance again and again.
struct TwiddleRun {
    static constexpr int longest = 512;

    // Elements 0 and length hold the ends, elements 1 to length - 1 what lies between them.
    alignas(64) double sines[longest + 1], cosines[longest + 1];
};

// Of values[0 .. length] each moves to twice its index, and new ones come between them.
template <int lanes>
[[gnu::always_inline]] inline void bisect(double* values, std::ptrdiff_t length,
                                          double halfSecant) {
    values[2 * length] = values[length];
    std::ptrdiff_t i = length;
    for (; i >= lanes; i -= lanes) {
        const double* from = values + i - lanes;
        double* to = values + 2 * (i - lanes);
        const Vector<lanes> even = *vectorsAt<lanes>(from);
        const Vector<lanes> odd = halfSecant * (even + *vectorsAt<lanes>(from + 1));
        Vector<lanes> low, high;
        interleave<lanes>(even, odd, low, high);
        *vectorsAt<lanes>(to) = low;
        *vectorsAt<lanes>(to + lanes) = high;
    }
    for (; i > 0; --i) {
        values[2 * i - 1] = halfSecant * (values[i - 1] + values[i]);
        values[2 * i - 2] = values[i - 1];
    }
}

// The run of `length`, a power of two, that starts at t in stage k. `ends`, the recursion of stage
// k - log2 length, stands at t and steps to its end.
template <int lanes>
[[gnu::always_inline]] inline void fill(TwiddleRun& run, int k, int t, int length,
                                        TwiddleRecursion& ends) {
    run.sines[0] = ends.sine;
    run.cosines[0] = ends.cosine;
    ends.next();
    run.sines[1] = ends.sine;
    run.cosines[1] = ends.cosine;
    for (int intervals = 1; intervals < length; intervals *= 2) {
        const int d = length / intervals / 2;
        const auto row = static_cast<std::size_t>(k - std::countr_zero(static_cast<unsigned>(d)));
        bisect<lanes>(run.sines, intervals, halfSecantTable[row]);
        bisect<lanes>(run.cosines, intervals, halfSecantTable[row]);
        if (t == 0) {
            run.sines[1] = sineTable[row];
            run.cosines[1] = cosineTable[row];
        }
    }
}

}  // namespace kernels
