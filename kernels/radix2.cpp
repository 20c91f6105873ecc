#include "kernels/radix2.h"

#include "kernels/WorkWatch.h"
#include "kernels/radix2Passes.h"
#include "kernels/radix2Reversal.h"
#include "kernels/radix2Twiddles.h"
#include "kernels/trigonometry.h"
#include "kernels/vectors.h"

#include <bit>
#include <cstddef>
#include <numbers>
#include <type_traits>
#include <utility>

namespace kernels {

static void reverseBits(double* re, double* im, int n) {
    int reversed = 0;
    for (int i = 0; i < n - 1; ++i) {
        if (i < reversed) {
            std::swap(re[i], re[reversed]);
            std::swap(im[i], im[reversed]);
        }
        int bit = n / 2;
        while (bit <= reversed) {
            reversed -= bit;
            bit /= 2;
        }
        reversed += bit;
    }
}

// Joins transforms of length half, two at a time. (ur, ui) = exp(sign i pi j / half).
static void radix2Stage(double* re, double* im, int n, int half, double sign) {
    const double theta = std::numbers::pi / half;
    const double c = cosine(theta), s = sign * sine(theta);
    double ur = 1.0, ui = 0.0;
    for (int j = 0; j < half; ++j) {
        for (int i = j; i < n; i += 2 * half) {
            const int p = i + half;
            const double tr = ur * re[p] - ui * im[p];
            const double ti = ui * re[p] + ur * im[p];
            re[p] = re[i] - tr;
            im[p] = im[i] - ti;
            re[i] += tr;
            im[i] += ti;
        }
        const double next = c * ur - s * ui;
        ui = c * ui + s * ur;
        ur = next;
    }
}

void plain::radix2(double* re, double* im, int n, double sign) {
    reverseBits(re, im, n);
    for (int half = 1; half < n; half *= 2) {
        radix2Stage(re, im, n, half, sign);
    }
    if (sign == 1.0) {
        for (int i = 0; i < n; ++i) {
            re[i] /= n;
            im[i] /= n;
        }
    }
}

// Three stages at a time join 16 vectors, which are in registers only where there are 32. Elsewhere
// no pass but the first takes three, and that one only of an odd number of stages.
#ifdef __aarch64__
template <int lanes>
constexpr bool joinsThreeStages = true;
#else
template <int lanes>
constexpr bool joinsThreeStages = lanes == 8;
#endif

// How many stages are left for passes from `half` on.
static int stagesLeft(int n, int half) {
    return std::countr_zero(static_cast<unsigned>(n / half));
}

// Calls pass with the number of its stages as a constant: two, or three where registers hold them.
//
// Three stages in a pass need 16 lines of memory at a time, which are all in one set of the first
// cache if half is 512 or more; a set has 8 or 12. So passes of three come first, and leave an even
// number of stages to passes of two.
template <int lanes, typename Pass>
[[gnu::always_inline]] static inline void withStages(int half, int left, const Pass& pass) {
    if constexpr (joinsThreeStages<lanes>) {
        if (left % 2 == 1 || (half == 8 && left > 4)) {
            return pass(std::integral_constant<int, 3>());
        }
    }
    pass(std::integral_constant<int, 2>());
}

// Calls pass with the row, as a constant in transforms of 2^8 to 2^10 where a vector has up to four
// lanes: the addresses of two stages from one place to another are then few enough for the
// registers.
template <int lanes, typename Pass>
[[gnu::always_inline]] static inline void withRow(int row, const Pass& pass) {
    if constexpr (!joinsThreeStages<lanes>) {
        switch (row) {
            case 64:
                return pass(std::integral_constant<int, 64>());
            case 128:
                return pass(std::integral_constant<int, 128>());
            case 256:
                return pass(std::integral_constant<int, 256>());
            default:
                break;
        }
    }
    pass(row);
}

// All stages from `half` on of a short transform, at `work` except that the last ones go to `to`.
// More than one are left. Here and below, each case has a call of its own: with one pointer instead
// of two, and without a multiplication by 1, a pass is faster.
template <int lanes>
[[gnu::always_inline]] static inline void shortPasses(Complexes work, Complexes to, int n, int half,
                                                      double sign) {
    while (half < n) {
        const int left = stagesLeft(n, half);
        withStages<lanes>(
            half, left, [&](auto stages) __attribute__((always_inline)) {
                if (stages < left) {
                    tablePass<lanes, stages, false>(work, work, n, half, sign, 1.0);
                } else {
                    withRow<lanes>(
                        half, [=](auto row) __attribute__((always_inline)) {
                            if (sign == 1.0) {
                                tablePass<lanes, stages, true>(work, to, row << stages, row, sign,
                                                               1.0 / n);
                            } else {
                                tablePass<lanes, stages, false>(work, to, row << stages, row, sign,
                                                                1.0);
                            }
                        });
                }
                half <<= stages;
            });
    }
}

// All stages from `half` on in place. More than one are left; the last ones of a scale are not all
// in the table.
template <int lanes>
[[gnu::always_inline]] static inline void longPasses(Complexes a, int n, int half, double sign,
                                                     double scale) {
    while (half < n) {
        const int left = stagesLeft(n, half);
        withStages<lanes>(
            half, left, [&](auto stages) __attribute__((always_inline)) {
                if (half << stages <= TwiddleTable::size) {
                    tablePass<lanes, stages, false>(a, a, n, half, sign, 1.0);
                } else if (stages < left || scale == 1.0) {
                    chainPass<lanes, stages, false>(a, n, half, sign, 1.0);
                } else {
                    chainPass<lanes, stages, true>(a, n, half, sign, scale);
                }
                half <<= stages;
            });
    }
}

namespace {

// A short transform runs in a buffer, which is aligned and in the first caches: it needs no tiles.
struct Buffer {
    static constexpr int size = 2048;
    alignas(64) double re[size], im[size];
};

}  // namespace

// The longest block within n that is not above the limit and leaves an even number of stages.
static int blockOf(int n, int limit) {
    while (n > limit) {
        n /= 4;
    }
    return n;
}

// Calls pass with the number of the first stages as a constant: three, or two where that leaves an
// even number to passes of two.
template <int lanes, typename Pass>
[[gnu::always_inline]] static inline int withFirstStages(int n, const Pass& pass) {
    if constexpr (!joinsThreeStages<lanes>) {
        if (stagesLeft(n, 1) % 2 == 0) {
            pass(std::integral_constant<int, 2>());
            return 1 << 2;
        }
    }
    pass(std::integral_constant<int, 3>());
    return 1 << 3;
}

template <int lanes>
[[gnu::always_inline]] static inline void transformShort(Complexes all, int n, double sign) {
    Buffer buffer;
    const Complexes work = {buffer.re, buffer.im};
    const int half = withFirstStages<lanes>(
        n, [=](auto stages)
               __attribute__((always_inline)) { firstPass<lanes, stages>(all, work, n, sign); });
    shortPasses<lanes>(work, all, n, half, sign);
}

// Goes as far as it can in blocks for the first cache (16 kB), then in blocks for the second (256
// kB).
template <int lanes>
[[gnu::always_inline]] static inline void transformLong(Complexes all, int n, double sign) {
    const int first = withFirstStages<lanes>(
        n, [=](auto stages)
               __attribute__((always_inline)) { firstPassInPlace<lanes, stages>(all, n, sign); });
    const int outer = blockOf(n, 1 << 14), inner = blockOf(outer, 1 << 10);
    WorkCount count(WorkCount::unknown);
    for (std::ptrdiff_t end = inner; end <= n; end += inner) {
        int half = first;
        for (const int size : {inner, outer, n}) {
            if (half < size && end % size == 0) {
                const double scale = sign == 1.0 && size == n ? 1.0 / n : 1.0;
                count.add(WorkWatch::element * size);
                longPasses<lanes>(all + (end - size), size, half, sign, scale);
            }
            half = size;
        }
    }
}

template <int lanes>
[[gnu::always_inline]] static inline void transform(Complexes all, int n, double sign) {
    if (n <= Buffer::size) {
        transformShort<lanes>(all, n, sign);
    } else {
        transformLong<lanes>(all, n, sign);
    }
}

FENDRA_VARIANTS(radix2Variant, transform)

void radix2(double* re, double* im, int n, double sign) {
    if (n < 64 || (sign != 1.0 && sign != -1.0)) {
        plain::radix2(re, im, n, sign);
    } else {
        radix2Variant(Complexes{re, im}, n, sign);
    }
}

}  // namespace kernels
