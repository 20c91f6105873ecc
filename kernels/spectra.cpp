#include "kernels/spectra.h"

#include "kernels/shuffles.h"
#include "kernels/vectors.h"

namespace kernels {

void plain::multiplySpectra(double* re, double* im, const double* factorRe, const double* factorIm,
                            int n) {
    for (int i = 0; i < n; ++i) {
        const double real = re[i] * factorRe[i] - im[i] * factorIm[i];
        im[i] = re[i] * factorIm[i] + im[i] * factorRe[i];
        re[i] = real;
    }
}

template <int lanes>
[[gnu::always_inline]] static inline void multiplyInVectors(double* re, double* im,
                                                            const double* factorRe,
                                                            const double* factorIm, int n) {
    int i = 0;
    for (; i + lanes <= n; i += lanes) {
        const Vector<lanes> a = *vectorsAt<lanes>(re + i), b = *vectorsAt<lanes>(im + i);
        const Vector<lanes> c = *vectorsAt<lanes>(factorRe + i),
                            d = *vectorsAt<lanes>(factorIm + i);
        *vectorsAt<lanes>(re + i) = a * c - b * d;
        *vectorsAt<lanes>(im + i) = a * d + b * c;
    }
    plain::multiplySpectra(re + i, im + i, factorRe + i, factorIm + i, n - i);
}

FENDRA_VARIANTS(multiplyVariant, multiplyInVectors)

void multiplySpectra(double* re, double* im, const double* factorRe, const double* factorIm,
                     int n) {
    multiplyVariant(re, im, factorRe, factorIm, n);
}

void plain::multiplyScaled(const double* aRe, const double* aIm, double before, const double* bRe,
                           const double* bIm, double sign, double after, int n, double* re,
                           double* im) {
    for (int i = 0; i < n; ++i) {
        const double a = before * aRe[i], b = before * aIm[i], c = bRe[i], d = sign * bIm[i];
        re[i] = after * (a * c - b * d);
        im[i] = after * (a * d + b * c);
    }
}

template <int lanes>
[[gnu::always_inline]] static inline void multiplyScaledInVectors(
    const double* aRe, const double* aIm, double before, const double* bRe, const double* bIm,
    double sign, double after, int n, double* re, double* im) {
    int i = 0;
    for (; i + lanes <= n; i += lanes) {
        const Vector<lanes> a = before * *vectorsAt<lanes>(aRe + i);
        const Vector<lanes> b = before * *vectorsAt<lanes>(aIm + i);
        const Vector<lanes> c = *vectorsAt<lanes>(bRe + i), d = sign * *vectorsAt<lanes>(bIm + i);
        *vectorsAt<lanes>(re + i) = after * (a * c - b * d);
        *vectorsAt<lanes>(im + i) = after * (a * d + b * c);
    }
    plain::multiplyScaled(aRe + i, aIm + i, before, bRe + i, bIm + i, sign, after, n - i, re + i,
                          im + i);
}

FENDRA_VARIANTS(multiplyScaledVariant, multiplyScaledInVectors)

void multiplyScaled(const double* aRe, const double* aIm, double before, const double* bRe,
                    const double* bIm, double sign, double after, int n, double* re, double* im) {
    multiplyScaledVariant(aRe, aIm, before, bRe, bIm, sign, after, n, re, im);
}

// The pairs i = first .. n / 2 - 1.
static void pairFrom(int first, double* re, double* im, int n, int sense) {
    const bool forward = sense >= 0;
    for (int i = first, j = n - first; i < n / 2; ++i, --j) {
        const double A = re[i] + re[j], B = re[i] - re[j];
        const double C = im[i] + im[j], D = im[i] - im[j];
        re[forward ? i : j] = (A - D) * 0.5;
        re[forward ? j : i] = (A + D) * 0.5;
        im[forward ? i : j] = (C + B) * 0.5;
        im[forward ? j : i] = (C - B) * 0.5;
    }
}

void plain::pairSpectra(double* re, double* im, int n, int sense) {
    pairFrom(1, re, im, n, sense);
}

// The elements j of a vector of pairs run backwards. Where i and j change places, B and D change
// their signs instead.
template <int lanes>
[[gnu::always_inline]] static inline void pairInVectors(double* re, double* im, int n, int sense) {
    const double sign = sense >= 0 ? 1.0 : -1.0;
    int i = 1;
    for (; i + lanes <= n / 2; i += lanes) {
        const int j = n - i - (lanes - 1);
        const Vector<lanes> reI = *vectorsAt<lanes>(re + i), imI = *vectorsAt<lanes>(im + i);
        Vector<lanes> reJ = *vectorsAt<lanes>(re + j), imJ = *vectorsAt<lanes>(im + j);
        reverseLanes<lanes>(reJ);
        reverseLanes<lanes>(imJ);
        const Vector<lanes> A = reI + reJ, B = sign * (reI - reJ);
        const Vector<lanes> C = imI + imJ, D = sign * (imI - imJ);
        *vectorsAt<lanes>(re + i) = (A - D) * 0.5;
        *vectorsAt<lanes>(im + i) = (C + B) * 0.5;
        reJ = (A + D) * 0.5;
        imJ = (C - B) * 0.5;
        reverseLanes<lanes>(reJ);
        reverseLanes<lanes>(imJ);
        *vectorsAt<lanes>(re + j) = reJ;
        *vectorsAt<lanes>(im + j) = imJ;
    }
    pairFrom(i, re, im, n, sense);
}

FENDRA_VARIANTS(pairVariant, pairInVectors)

void pairSpectra(double* re, double* im, int n, int sense) {
    pairVariant(re, im, n, sense);
}

}  // namespace kernels
