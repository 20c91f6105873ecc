#include "kernels/hartleyButterflies.h"
#include "kernels/hartleyFoldParts.h"
#include "kernels/shuffles.h"
#include "kernels/vectors.h"

#include <cstddef>

namespace kernels::fold {

template <int lanes>
[[gnu::always_inline]] static inline void joinOffsets(double* x, double* y, std::ptrdiff_t K,
                                                      const Vector<lanes>& s1,
                                                      const Vector<lanes>& c1) {
    Vector<lanes> f0 = *vectorsAt<lanes>(x), f1 = *vectorsAt<lanes>(x + K);
    Vector<lanes> f2 = *vectorsAt<lanes>(x + 2 * K), f3 = *vectorsAt<lanes>(x + 3 * K);
    Vector<lanes> g0 = *vectorsAt<lanes>(y), g1 = *vectorsAt<lanes>(y + K);
    Vector<lanes> g2 = *vectorsAt<lanes>(y + 2 * K), g3 = *vectorsAt<lanes>(y + 3 * K);
    reverseLanes<lanes>(g0);
    reverseLanes<lanes>(g1);
    reverseLanes<lanes>(g2);
    reverseLanes<lanes>(g3);
    joinMirrored<lanes>(f0, f1, f2, f3, g0, g1, g2, g3, s1, c1);
    reverseLanes<lanes>(g0);
    reverseLanes<lanes>(g1);
    reverseLanes<lanes>(g2);
    reverseLanes<lanes>(g3);
    *vectorsAt<lanes>(x) = f0;
    *vectorsAt<lanes>(x + K) = f1;
    *vectorsAt<lanes>(x + 2 * K) = f2;
    *vectorsAt<lanes>(x + 3 * K) = f3;
    *vectorsAt<lanes>(y) = g0;
    *vectorsAt<lanes>(y + K) = g1;
    *vectorsAt<lanes>(y + 2 * K) = g2;
    *vectorsAt<lanes>(y + 3 * K) = g3;
}

namespace {

// The elements at half a quarter, joined before the vectors that meet there with their mirror image
// and leave there what is not wanted.
struct Halfway {
    double g0, g1, g2, g3;

    Halfway(const double* y, std::ptrdiff_t K) : g0(y[0]), g1(y[K]), g2(y[2 * K]), g3(y[3 * K]) {
        joinHalfway<1>(g0, g1, g2, g3);
    }
    void store(double* y, std::ptrdiff_t K) const {
        y[0] = g0;
        y[K] = g1;
        y[2 * K] = g2;
        y[3 * K] = g3;
    }
};

}  // namespace

// Joins transforms of length K, four at a time.
template <int lanes>
[[gnu::always_inline]] static inline void joinInBlocks(Parts d, int length, std::ptrdiff_t K,
                                                       const Twiddles& twiddles) {
    const double *sines = twiddles.sines + K / 2 - 1, *cosines = twiddles.cosines + K / 2 - 1;
    for (std::ptrdiff_t block = 0; block < length; block += 4 * K) {
        double *re = d.re + block, *im = d.im + block;
        const Halfway halfRe(re + K / 2, K), halfIm(im + K / 2, K);
        join<1>(re[0], re[K], re[2 * K], re[3 * K]);
        join<1>(im[0], im[K], im[2 * K], im[3 * K]);
        for (std::ptrdiff_t i = 1; i <= K / 2; i += lanes) {
            const Vector<lanes> s1 = *vectorsAt<lanes>(sines + i),
                                c1 = *vectorsAt<lanes>(cosines + i);
            const std::ptrdiff_t mirror = K - i - (lanes - 1);
            joinOffsets<lanes>(re + i, re + mirror, K, s1, c1);
            joinOffsets<lanes>(im + i, im + mirror, K, s1, c1);
        }
        halfRe.store(re + K / 2, K);
        halfIm.store(im + K / 2, K);
    }
}

FENDRA_VARIANTS(backVariant, joinInBlocks)

void joinBack(Parts d, int length, int K, const Twiddles& twiddles) {
    backVariant(d, length, std::ptrdiff_t{K}, twiddles);
}

}  // namespace kernels::fold
