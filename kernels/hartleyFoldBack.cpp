#include "kernels/hartleyButterflies.h"
#include "kernels/hartleyFoldParts.h"
#include "kernels/shuffles.h"
#include "kernels/vectors.h"

#include <algorithm>
#include <cstddef>
#include <type_traits>

namespace kernels::fold {

namespace {

// The eight pieces of a block.
struct Pieces {
    std::ptrdiff_t second, fifth;  // from the first one

    [[nodiscard]] std::ptrdiff_t distance(int piece) const {
        return piece / 4 * fifth + piece % 4 * second;
    }
};

}  // namespace

// The vectors of one slot, or of some, in all eight pieces: before the stage the elements of four
// transforms by turns with their mirror images, after it first all elements, then all images.
template <int lanes>
[[gnu::always_inline]] static inline void loadSlots(const double* f, const Pieces& pieces,
                                                    Vector<lanes>* v) {
#pragma GCC unroll 8
    for (int i = 0; i < 8; ++i) {
        v[i] = *vectorsAt<lanes>(f + pieces.distance(i));
    }
}
template <int lanes>
[[gnu::always_inline]] static inline void storeSlots(double* f, const Pieces& pieces,
                                                     const Vector<lanes>* v) {
    constexpr int order[] = {0, 1, 2, 3, 7, 6, 5, 4};
#pragma GCC unroll 8
    for (int i = 0; i < 8; ++i) {
        *vectorsAt<lanes>(f + pieces.distance(i)) = v[order[i]];
    }
}

template <int lanes>
[[gnu::always_inline]] static inline void joinSlots(Vector<lanes>* v, const Vector<lanes>& s1,
                                                    const Vector<lanes>& c1) {
    joinMirrored<lanes>(v[0], v[2], v[4], v[6], v[1], v[3], v[5], v[7], s1, c1);
}

// The slots from 0 on. What offsets 0 and K / 2 become takes the first lanes.
template <int lanes>
[[gnu::always_inline]] static inline void joinFirstSlots(double* f, const Pieces& pieces,
                                                         const Vector<lanes>& s1,
                                                         const Vector<lanes>& c1) {
    Vector<lanes> v[8];
    loadSlots<lanes>(f, pieces, v);
    Vector<lanes> f0 = v[0], f1 = v[2], f2 = v[4], f3 = v[6];
    Vector<lanes> g0 = v[1], g1 = v[3], g2 = v[5], g3 = v[7];
    join<lanes>(f0, f1, f2, f3);
    joinHalfway<lanes>(g0, g1, g2, g3);
    joinSlots<lanes>(v, s1, c1);
    takeFirstLane<lanes>(v[0], f0);
    takeFirstLane<lanes>(v[1], f1);
    takeFirstLane<lanes>(v[7], f2);
    takeFirstLane<lanes>(v[6], f3);
    takeFirstLane<lanes>(v[2], g0);
    takeFirstLane<lanes>(v[3], g1);
    takeFirstLane<lanes>(v[4], g2);
    takeFirstLane<lanes>(v[5], g3);
    storeSlots<lanes>(f, pieces, v);
}

// Of the block of eight pieces of `slots` each that starts at d, the slots from first to first +
// count - 1, all in one page.
template <int lanes>
[[gnu::always_inline]] static inline void joinSome(Parts d, std::ptrdiff_t slots,
                                                   const Pieces& pieces, std::ptrdiff_t first,
                                                   std::ptrdiff_t count, const Twiddles& twiddles) {
    const double* const sines = twiddles.sines + slots + first;
    const double* const cosines = twiddles.cosines + slots + first;
    const Parts part = d.at(first);
    std::ptrdiff_t slot = 0;
    if (first == 0) {
        const Vector<lanes> s1 = *vectorsAt<lanes>(sines), c1 = *vectorsAt<lanes>(cosines);
        joinFirstSlots<lanes>(part.re, pieces, s1, c1);
        joinFirstSlots<lanes>(part.im, pieces, s1, c1);
        slot = lanes;
    }
    for (; slot < count; slot += lanes) {
        const Vector<lanes> s1 = *vectorsAt<lanes>(sines + slot);
        const Vector<lanes> c1 = *vectorsAt<lanes>(cosines + slot);
        for (double* f : {part.re + slot, part.im + slot}) {
            Vector<lanes> v[8];
            loadSlots<lanes>(f, pieces, v);
            joinSlots<lanes>(v, s1, c1);
            storeSlots<lanes>(f, pieces, v);
        }
    }
}

// Joins transforms, four at a time. Each has two halves of `slots`; a number that is known when
// this is compiled is below a page.
template <int lanes, typename Number>
[[gnu::always_inline]] static inline void joinInBlocks(Parts d, int length, Number slots,
                                                       const Twiddles& twiddles) {
    constexpr bool known = !std::is_same_v<Number, std::ptrdiff_t>;
    const std::ptrdiff_t page = known ? slots : std::min<std::ptrdiff_t>(slots, d.page());
    const Pieces pieces =
        known ? Pieces{slots, 4 * slots} : Pieces{d.distance(slots), d.distance(4 * slots)};
    for (std::ptrdiff_t block = 0; block < length; block += 8 * slots) {
        for (std::ptrdiff_t first = 0; first < slots; first += page) {
            joinSome<lanes>(d.at(block), slots, pieces, first, page, twiddles);
        }
    }
}

// Two stages in one pass over memory: what a slot of four neighbouring blocks holds becomes four
// slots of the block that they make.
template <int lanes>
[[gnu::always_inline]] static inline void joinTwiceInBlocks(Parts d, int length,
                                                            std::ptrdiff_t slots,
                                                            const Twiddles& twiddles) {
    constexpr std::ptrdiff_t some = 64;
    const Pieces pieces = {d.distance(slots), d.distance(4 * slots)};
    const Pieces larger = {d.distance(4 * slots), d.distance(16 * slots)};
    for (std::ptrdiff_t block = 0; block < length; block += 32 * slots) {
        for (std::ptrdiff_t first = 0; first < slots; first += some) {
            for (int i = 0; i < 4; ++i) {
                joinSome<lanes>(d.at(block + 8 * slots * i), slots, pieces, first, some, twiddles);
            }
            for (int i = 0; i < 4; ++i) {
                joinSome<lanes>(d.at(block), 4 * slots, larger, first + slots * i, some, twiddles);
            }
        }
    }
}

FENDRA_VARIANTS(backVariant, joinInBlocks)
FENDRA_VARIANTS(twiceVariant, joinTwiceInBlocks)

void joinBack(Parts d, int length, int K, const Twiddles& twiddles) {
    if (K == 16) {
        backVariant(d, length, std::integral_constant<std::ptrdiff_t, 8>(), twiddles);
    } else if (K == 32) {
        backVariant(d, length, std::integral_constant<std::ptrdiff_t, 16>(), twiddles);
    } else {
        backVariant(d, length, std::ptrdiff_t{K / 2}, twiddles);
    }
}

void joinBackTwice(Parts d, int length, int K, const Twiddles& twiddles) {
    twiceVariant(d, length, std::ptrdiff_t{K / 2}, twiddles);
}

}  // namespace kernels::fold
