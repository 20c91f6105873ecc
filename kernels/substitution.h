#pragma once

#include "kernels/Block.h"
#include "kernels/WorkWatch.h"
#include "kernels/arithmetic.h"

#include <cstddef>

namespace kernels {

// The solution of L U x = b takes the place of b, for `count` right-hand sides next to each other:
// the columns of a block of n rows. a holds the factors as eliminate leaves them. Sums run over
// ascending k:
//     forward     b[i] - a[i][f] b[f] - ... - a[i][i - 1] b[i - 1]
//     backward    (b[i] - a[i][i + 1] b[i + 1] - ... - a[i][n - 1] b[n - 1]) / a[i][i]
// where b[f] is the first element that is not 0. The zeros that lead b stay as they are and form no
// product, so neither their sign nor an infinite element of L beside them has an effect.
void substitute(const double* a, int n, Block<double> b, int count);

// Many right-hand sides are solved fastest in blocks of this width, without gaps.
inline constexpr int substitutionWidth = 32;

namespace plain {
template <typename T>
void substitute(const T* a, int n, Block<T> b, int count) {
    const auto reduced = [a, n, &b](int i, int from, int to) {
        T element = *b.row(i);
        for (int k = from; k < to; ++k) {
            element = difference(element, product(a[std::ptrdiff_t{n} * i + k], *b.row(k)));
        }
        return element;
    };
    WorkCount work(WorkCount::unknown);
    for (; count > 0; --count, b = b.from(0, 1)) {
        int first = 0;
        while (first < n && *b.row(first) == T(0)) {
            ++first;
        }
        for (int i = first; i < n; ++i) {
            *b.row(i) = reduced(i, first, i);
            work.add(WorkWatch::element * i);
        }
        for (int i = n - 1; i >= 0; --i) {
            *b.row(i) = quotient(reduced(i, i + 1, n), a[std::ptrdiff_t{n} * i + i]);
            work.add(WorkWatch::element * (n - i));
        }
    }
}
}  // namespace plain

inline void substitute(const int* a, int n, Block<int> b, int count) {
    plain::substitute(a, n, b, count);
}

}  // namespace kernels
