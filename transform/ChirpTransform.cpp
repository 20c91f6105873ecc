#include "kernels/spectra.h"
#include "kernels/trigonometry.h"
#include "transform/ChirpPlan.h"
#include "transform/FourierTransform.h"

#include <algorithm>
#include <cstdint>
#include <numbers>

static constexpr int anglesAtOnce = 256;

void FourierTransform::chirpTransform(double* re, double* im, int n, int sign) {
    ChirpPlan(n).transform(re, im, sign);
}

void FourierTransform::makeChirp(double* chirpRe, double* chirpIm, int n, int m, int sign) {
    const double base = sign * std::numbers::pi / n;
    const auto period = 2 * static_cast<std::uint32_t>(n);
    // q is k^2 mod 2n, kept in integers. As pi k^2 / n the angle would grow to pi n, and its
    // rounding error with it.
    std::uint32_t q = 0;
    for (int first = 0; first < n; first += anglesAtOnce) {
        const int count = std::min(anglesAtOnce, n - first);
        double angles[anglesAtOnce];
        for (int i = 0; i < count; ++i) {
            angles[i] = q * base;
            q += 2 * static_cast<std::uint32_t>(first + i) + 1;
            if (q >= period) {
                q -= period;
            }
        }
        kernels::sinesAndCosines(angles, count, chirpIm + first, chirpRe + first);
    }
    std::fill(chirpRe + n, chirpRe + m, 0.0);
    std::fill(chirpIm + n, chirpIm + m, 0.0);
}

void FourierTransform::extendChirp(double* re, double* im, int n, int m) {
    const bool negate = n % 2 != 0;
    for (int i = n; i < m; ++i) {
        re[i] = negate ? -re[i - n] : re[i - n];
        im[i] = negate ? -im[i - n] : im[i - n];
    }
}

void FourierTransform::hartleyComplexTransform(double* re, double* im, int n, int sense) {
    if (sense >= 0) {
        hartleyTransform.hartley(re, n, 0);
        hartleyTransform.hartley(im, n, 0);
    }
    kernels::pairSpectra(re, im, n, sense);
    if (sense < 0) {
        hartleyTransform.hartley(re, n, 1);
        hartleyTransform.hartley(im, n, 1);
    }
}

void FourierTransform::circularFold(double* fixedRe, double* fixedIm, double* dataRe,
                                    double* dataIm, int logM) {
    const int m = 1 << logM;
    hartleyComplexTransform(fixedRe, fixedIm, m, +1);
    hartleyComplexTransform(dataRe, dataIm, m, +1);
    kernels::multiplySpectra(dataRe, dataIm, fixedRe, fixedIm, m);
    hartleyComplexTransform(dataRe, dataIm, m, -1);
}
