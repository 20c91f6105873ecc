#include "signal/SpectralUnfolder.h"

#include "transform/FourierTransform.h"

#include <algorithm>
#include <cstddef>
#include <new>
#include <stdexcept>
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

static void divideSpectra(const double* signal, int signalLength, const double* kernel,
                          int kernelLength, double* result, int resultLength) {
    const int P = std::max(signalLength, kernelLength);
    const auto size = static_cast<std::size_t>(P);
    std::vector<double> yRe(size), yIm(size), hRe(size), hIm(size);
    std::copy_n(signal, signalLength, yRe.data());
    std::copy_n(kernel, kernelLength, hRe.data());

    FourierTransform fourier;
    fourier.transform(yRe.data(), yIm.data(), P, -1);
    fourier.transform(hRe.data(), hIm.data(), P, -1);
    divide(yRe.data(), yIm.data(), hRe.data(), hIm.data(), P);
    fourier.transform(yRe.data(), yIm.data(), P, +1);

    double* end = std::copy_n(yRe.data(), std::min(resultLength, P), result);
    std::fill(end, result + resultLength, 0.0);
}

int SpectralUnfolder::unfold(const double* signal, int signalLength, const double* kernel,
                             int kernelLength, double* result, int resultLength) {
    try {
        divideSpectra(signal, signalLength, kernel, kernelLength, result, resultLength);
    } catch (const std::bad_alloc&) {
        return 0;
    } catch (const std::length_error&) {  // a size beyond what vectors hold
        return 0;
    }
    return 1;
}
