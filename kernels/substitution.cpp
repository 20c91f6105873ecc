#include "kernels/substitution.h"

#include "kernels/vectors.h"

#include <algorithm>

namespace kernels {

// Right-hand sides are computed side by side, a sum of each in a lane. A row of the factors waits
// for the last element of the one before it, so it cannot share its loads of b with another row:
// with AVX-512 the second cache, which gives a vector a cycle, holds the sums back to half of what
// the arithmetic could do. Four sums at a time are enough for that.

// Subtracts the products of the terms from <= k < to. With `choosing`, the sums of those right-hand
// sides alone whose first element that is not 0 has come.
template <int lanes, int vectors, bool choosing>
[[gnu::always_inline]] static inline void subtractTerms(const double* row, Block<const double> b,
                                                        const Vector<lanes>* first, int from,
                                                        int to, Vector<lanes>* sums) {
    for (int k = from; k < to; ++k) {
#pragma GCC unroll 16
        for (int v = 0; v < vectors; ++v) {
            const Vector<lanes> next = sums[v] - row[k] * vectorsAt<lanes>(b.row(k))[v];
            if constexpr (choosing) {
                sums[v] = first[v] <= static_cast<double>(k) ? next : sums[v];
            } else {
                sums[v] = next;
            }
        }
    }
}

namespace {

// A group of vectors * lanes right-hand sides.
template <int lanes, int vectors>
struct Group {
    Vector<lanes> first[std::size_t{vectors}];  // of each, the first element that is not 0
    int leastFirst, mostFirst = 0;

    [[gnu::always_inline]] Group(int n, Block<const double> b) : leastFirst(n) {
#pragma GCC unroll 16
        for (Vector<lanes>& index : first) {
            index = static_cast<double>(n) - Vector<lanes>{};
        }
        for (int i = n - 1; i >= 0; --i) {
#pragma GCC unroll 16
            for (int v = 0; v < vectors; ++v) {
                first[v] = vectorsAt<lanes>(b.row(i))[v] != 0.0
                               ? static_cast<double>(i) - Vector<lanes>{}
                               : first[v];
            }
        }
        for (const Vector<lanes>& index : first) {
            for (int lane = 0; lane < lanes; ++lane) {
                leastFirst = std::min(leastFirst, static_cast<int>(index[lane]));
                mostFirst = std::max(mostFirst, static_cast<int>(index[lane]));
            }
        }
    }
};

}  // namespace

template <int lanes, int vectors>
[[gnu::always_inline]] static inline void substituteGroup(const double* a, int n, Block<double> b) {
    const Group<lanes, vectors> group(n, b);
    Vector<lanes> sums[std::size_t{vectors}];
    for (int i = group.leastFirst + 1; i < n; ++i) {
        const double* row = a + std::ptrdiff_t{n} * i;
        const int allBegun = std::min(i, group.mostFirst);
#pragma GCC unroll 16
        for (int v = 0; v < vectors; ++v) {
            sums[v] = vectorsAt<lanes>(b.row(i))[v];
        }
        subtractTerms<lanes, vectors, true>(row, b, group.first, group.leastFirst, allBegun, sums);
        subtractTerms<lanes, vectors, false>(row, b, group.first, allBegun, i, sums);
#pragma GCC unroll 16
        for (int v = 0; v < vectors; ++v) {
            vectorsAt<lanes>(b.row(i))[v] = sums[v];
        }
    }
    for (int i = n - 1; i >= 0; --i) {
        const double* row = a + std::ptrdiff_t{n} * i;
#pragma GCC unroll 16
        for (int v = 0; v < vectors; ++v) {
            sums[v] = vectorsAt<lanes>(b.row(i))[v];
        }
        subtractTerms<lanes, vectors, false>(row, b, group.first, i + 1, n, sums);
#pragma GCC unroll 16
        for (int v = 0; v < vectors; ++v) {
            vectorsAt<lanes>(b.row(i))[v] = sums[v] / row[i];
        }
    }
}

// As many groups as there are, and narrower ones for the right-hand sides that remain.
template <int lanes, int vectors>
[[gnu::always_inline]] static inline void substituteGroups(const double* a, int n, Block<double> b,
                                                           int count) {
    constexpr int size = vectors * lanes;
    for (; count >= size; count -= size, b = b.from(0, size)) {
        substituteGroup<lanes, vectors>(a, n, b);
    }
    if constexpr (vectors > 1) {
        substituteGroups<lanes, vectors / 2>(a, n, b, count);
    } else if constexpr (lanes > 2) {
        substituteGroups<lanes / 2, 1>(a, n, b, count);
    } else {
        plain::substitute(a, n, b, count);
    }
}

template <int lanes>
[[gnu::always_inline]] static inline void substituteAll(const double* a, int n, Block<double> b,
                                                        int count) {
    substituteGroups<lanes, lanes == 8 ? 4 : 8>(a, n, b, count);
}

FENDRA_VARIANTS(substituteVariant, substituteAll)

void substitute(const double* a, int n, Block<double> b, int count) {
    substituteVariant(a, n, b, count);
}

}  // namespace kernels
