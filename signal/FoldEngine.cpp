#include "signal/FoldEngine.h"

#include "kernels/convolution.h"
#include "kernels/spectra.h"
#include "signal/transformThird.h"
#include "signal/watched.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

// w holds the last S samples of a and then a itself, so that no index wraps. S samples, not S - 1:
// the sum for n starts at a[n - 1], one sample before a[n], and that is the lag of this mode.
static void foldInTime(const double* a, int L, const double* b, int S, double* result) {
    std::vector<double> extended(static_cast<std::size_t>(L) + static_cast<std::size_t>(S));
    double* w = extended.data();
    std::copy_n(a + (L - S), S, w);
    std::copy_n(a, L, w + S);
    kernels::convolve(w, b, L, S, result);
}

static void foldInFrequency(KeptPlan& kept, const double* a, int L, const double* b, int S,
                            double* result, int resultLength) {
    const auto size = static_cast<std::size_t>(L);
    std::vector<double> aRe(size), aIm(size), bRe(size), bIm(size);
    std::copy_n(a, L, aRe.data());
    std::copy_n(b, S, bRe.data());

    FourierPlan& plan = kept.of(L);
    transformThird(0, plan, aRe, aIm, -1);
    transformThird(1, plan, bRe, bIm, -1);
    kernels::multiplySpectra(aRe.data(), aIm.data(), bRe.data(), bIm.data(), L);
    transformThird(2, plan, aRe, aIm, +1);

    double* end = std::copy_n(aRe.data(), L, result);
    std::fill(end, result + resultLength, 0.0);
}

int FoldEngine::fold(const double* first, int firstLength, const double* second, int secondLength,
                     double* result, int resultLength, int mode) {
    if (firstLength < secondLength) {
        std::swap(first, second);
        std::swap(firstLength, secondLength);
    }
    if (resultLength < firstLength) {
        return 0;
    }
    return watched(within, [&] {
        if (mode == 0) {
            foldInTime(first, firstLength, second, secondLength, result);
        } else if (mode == 1) {
            foldInFrequency(keptPlan != nullptr ? *keptPlan : ownPlan, first, firstLength, second,
                            secondLength, result, resultLength);
        }
    });
}
