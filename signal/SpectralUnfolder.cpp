#include "signal/SpectralUnfolder.h"

#include "signal/transformThird.h"
#include "signal/watched.h"

#include <algorithm>
#include <cstddef>
#include <vector>

// Y becomes Y conj(H) / |H|^2. Where H is 0 the stand-in denominator leaves 0: the numerator is 0
// too.
static void divide(double* yRe, double* yIm, const double* hRe, const double* hIm, int n) {
    for (int i = 0; i < n; ++i) {
        double denominator = hRe[i] * hRe[i] + hIm[i] * hIm[i];
        if (denominator == 0.0) {
            denominator = 1e-100;
        }
        const double re = (yRe[i] * hRe[i] + yIm[i] * hIm[i]) / denominator;
        yIm[i] = (hRe[i] * yIm[i] - yRe[i] * hIm[i]) / denominator;
        yRe[i] = re;
    }
}

static void divideSpectra(KeptPlan& kept, const double* signal, int signalLength,
                          const double* kernel, int kernelLength, double* result,
                          int resultLength) {
    const int P = std::max(signalLength, kernelLength);
    const auto size = static_cast<std::size_t>(P);
    std::vector<double> yRe(size), yIm(size), hRe(size), hIm(size);
    std::copy_n(signal, signalLength, yRe.data());
    std::copy_n(kernel, kernelLength, hRe.data());

    FourierPlan& plan = kept.of(P);
    transformThird(0, plan, yRe, yIm, -1);
    transformThird(1, plan, hRe, hIm, -1);
    divide(yRe.data(), yIm.data(), hRe.data(), hIm.data(), P);
    transformThird(2, plan, yRe, yIm, +1);

    double* end = std::copy_n(yRe.data(), std::min(resultLength, P), result);
    std::fill(end, result + resultLength, 0.0);
}

int SpectralUnfolder::unfold(const double* signal, int signalLength, const double* kernel,
                             int kernelLength, double* result, int resultLength) {
    return watched(within, [&] {
        divideSpectra(keptPlan != nullptr ? *keptPlan : ownPlan, signal, signalLength, kernel,
                      kernelLength, result, resultLength);
    });
}
