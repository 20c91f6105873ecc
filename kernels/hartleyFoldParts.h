#pragma once

#include <cstddef>

namespace kernels::fold {

// The parts of foldWithSpectrum, for lengths n from 256 on.
//
// They reverse no order of bits. An index into the signal has its bits reversed where it
// stands for what a Hartley transform calls its position: so the stages of the first transform join
// what is far apart first, leave the spectrum at reversed indices, and these are the positions at
// which the transform back wants it.
//
// On the way there, after the stage that makes transforms of length K, element k of all n / K of
// them is a block of n / K neighbours at the index r n / K, with r = k reversed in log2 K bits.
// The offsets k and K - k, which a butterfly joins, have r in one of the groups from G to 2 G - 1,
// G a power of two, and mirror each other there: r and 3 G - 1 - r. Of the two r the even one is
// that of the offset below K / 2. All elements of a pair of blocks stay in these two until the
// spectrum is there, and beyond, as the transform back starts within blocks. So a pair passes
// through all of this in the first-level cache, and only the first and the last stages are passes
// over memory. The pairing of the spectrum (pairSpectra) joins the same mirror images.

// The signal in memory. What a butterfly joins lies powers of two apart, and all of it would fall
// into one set of the first-level cache. So a gap of some cache lines follows each page, whose
// length is 128 times the first length of the way back (hartleyFoldOrder.h). What a stage joins
// lies in one page, or two or four pieces of it fill each page, or each of them begins a page: so
// its distances are the same throughout the stage.
struct Parts {
    double *re, *im;
    int pageBits;

    static constexpr std::ptrdiff_t gap = 40;

    [[nodiscard]] std::ptrdiff_t page() const { return std::ptrdiff_t{1} << pageBits; }
    // From the beginning to an element.
    [[nodiscard]] std::ptrdiff_t distance(std::ptrdiff_t index) const {
        return index + (index >> pageBits) * gap;
    }
    [[nodiscard]] Parts at(std::ptrdiff_t index) const {
        return {re + distance(index), im + distance(index), pageBits};
    }
};

struct Twiddles {
    // Element e: the angle t pi / (n / 2), t being e reversed in log2 n - 3 bits. As twiddles do
    // not depend on the stage, that of the pair of r = 2 e in any stage.
    const double *reversedSines, *reversedCosines;
    // From element K / 2 on, for the lengths K that stages back join: the angles t pi / (2 K), t
    // being the offset of each slot of a transform of that length (hartleyFoldOrder.h).
    const double *sines, *cosines;

    Twiddles(const double* tables, int n)
        : reversedSines(tables),
          reversedCosines(tables + n / 8),
          sines(tables + n / 4),
          cosines(tables + n / 2) {}
};

// What becomes of the spectrum: it is multiplied by the fixed one,
struct Product {
    const double *re, *im;
    bool conjugate;
};
// or kept as that.
struct Keeping {
    double *re, *im;
};

// The first stages, which make transforms of length 4 for an even log2 n, of length 8 for an odd
// one. halfZero: the second half counts as zeros.
void firstStages(Parts d, int n, bool halfZero);

// A stage in which `size` elements belong to each r, 16 or more: in the first `length` elements, or
// in two mirrored blocks of that length.
void joinGroups(Parts d, int length, int size, const Twiddles& twiddles);
void joinBlocks(Parts d, int low, int high, int length, int size, const Twiddles& twiddles);

// The last stage, the spectrum and what becomes of it and, on the way back, the first pass and the
// first stage, which make the first transforms of hartleyFoldOrder.h: in the first `length`
// elements, or in two mirrored blocks of that length in the group that starts at `group`.
void useGroups(Parts d, int length, int n, const Twiddles& twiddles, const Product& product);
void useGroups(Parts d, int length, int n, const Twiddles& twiddles, const Keeping& keeping);
void useBlocks(Parts d, int low, int high, int length, int group, int n, const Twiddles& twiddles,
               const Product& product);
void useBlocks(Parts d, int low, int high, int length, int group, int n, const Twiddles& twiddles,
               const Keeping& keeping);

// A stage back, which joins transforms of length K, four at a time, in `length` elements.
void joinBack(Parts d, int length, int K, const Twiddles& twiddles);

// That stage and the next one in one pass, for K from 128 on.
void joinBackTwice(Parts d, int length, int K, const Twiddles& twiddles);

}  // namespace kernels::fold
