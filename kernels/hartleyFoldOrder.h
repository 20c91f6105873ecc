#pragma once

#include "kernels/hartleyButterflies.h"
#include "kernels/hartleyFoldParts.h"

namespace kernels::fold {

// The order on the way back, from the first transforms on, which tiles leave.
//
// A transform of length K lies folded: the first half of its place has slots for the offsets below
// K / 2, the second half has the same slots for their mirror images, K less the offset. In slot 0
// of the second half stands offset K / 2, as offset 0 is its own image. In the first transforms the
// slots are the offsets.
//
// A stage joins four such transforms. Of what is at offset i and its image it makes the elements at
// i, K - i, K + i and 2 K - i and their images; so these four follow one another in pieces of K / 2
// slots each. Hence a stage finds what it joins, and leaves what it made, in one slot of eight
// pieces: no vector is reversed, or lies across two cache lines. Only what offsets 0 and K / 2
// become takes the slots that start the pieces in an order of its own.

// The length of the first transforms.
inline int firstLength(int n) {
    return isEven(log2Of(n)) ? 16 : 32;
}

// Eight slots from `slot` on, a multiple of eight, and their offsets: that of the first one, that
// of the second one, and 1 or -1, by which the others follow.
struct Run {
    static constexpr int length = 8;

    int slot, head, next, step;
};

// Calls use(run) for the slots of a transform of length K, in their order. The other arguments are
// for the pieces that it consists of: where one starts, at which offset, and what becomes of an
// offset within it.
template <typename Use>
// NOLINTNEXTLINE(misc-no-recursion): the recursion is the order, and log4 K deep
void forEachRun(int K, int first, const Use& use, int slot = 0, int head = 0, int offset = 0,
                int step = 1) {
    if (K == first) {
        for (int i = 0; i < K / 2; i += Run::length) {
            use(Run{slot + i, i == 0 ? head : offset + step * i, offset + step * (i + 1), step});
        }
        return;
    }
    const int joined = K / 4, half = joined / 2;
    forEachRun(joined, first, use, slot, head, offset, step);
    forEachRun(joined, first, use, slot + half, offset + step * joined, offset + step * joined,
               -step);
    forEachRun(joined, first, use, slot + joined, offset + step * half, offset + step * joined,
               step);
    forEachRun(joined, first, use, slot + joined + half, offset + step * 3 * half,
               offset + step * 2 * joined, -step);
}

// Notes in the last n / 8 of the tables where unfold finds the samples of a transform of length n.
void findPlaces(double* tables, const Parts& d, int n);

}  // namespace kernels::fold
