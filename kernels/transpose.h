#pragma once

#include "kernels/vectors.h"

#include <cstddef>
#include <utility>

// Of two vectors a and b, the elements of a whose index has the bit `width` change places with
// those of b whose index has not.
template <int lanes, int width, int... i>
[[gnu::always_inline]] inline void exchangeBlocks(Vector<lanes>& a, Vector<lanes>& b,
                                                  std::integer_sequence<int, i...> /*indices*/) {
    const Vector<lanes> x = a, y = b;
    a = __builtin_shufflevector(x, y, ((i & width) != 0 ? lanes + i - width : i)...);
    b = __builtin_shufflevector(x, y, ((i & width) != 0 ? lanes + i : i + width)...);
}

// Transposes a square of `lanes` vectors: blocks of half its width first, down to single elements.
// The square is aligned to a whole vector, since clang++ takes a reference to one for aligned.
template <int lanes, int width = lanes / 2>
[[gnu::always_inline]] inline void transpose(Vector<lanes> (&rows)[std::size_t{lanes}]) {
#pragma GCC unroll 8
    for (int r = 0; r < lanes; ++r) {
        if ((r & width) == 0) {
            exchangeBlocks<lanes, width>(rows[r], rows[r + width],
                                         std::make_integer_sequence<int, lanes>());
        }
    }
    if constexpr (width > 1) {
        transpose<lanes, width / 2>(rows);
    }
}
