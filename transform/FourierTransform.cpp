#include "transform/FourierTransform.h"

#include "kernels/radix2.h"

#include <bit>

void FourierTransform::transform(double* re, double* im, int n, int sign) {
    if (n < 1) {
        return;
    }
    if (nextPowerOfTwo(n) == static_cast<std::uint32_t>(n)) {
        radix2Transform(re, im, n, sign);
    } else {
        chirpTransform(re, im, n, sign);
    }
}

int FourierTransform::radix2Transform(double* re, double* im, int n, double sign) {
    radix2(re, im, n, sign);
    return n;
}

std::uint32_t FourierTransform::nextPowerOfTwo(int n) {
    return n < 2 ? 1U : std::bit_ceil(static_cast<std::uint32_t>(n));
}

// A Hartley spectrum H is the even part of the Fourier spectrum plus its odd part over i. So for
// the mirror pair i, j = n - i the sums A, C and differences B, D of the two Hartley spectra make
// up both elements of the Fourier spectrum. Elements 0 and n / 2 are their own mirror images.
void FourierTransform::hartleyComplexTransform(double* re, double* im, int n, int sense) {
    const bool forward = sense >= 0;
    if (forward) {
        hartleyTransform.hartley(re, n, 0);
        hartleyTransform.hartley(im, n, 0);
    }
    for (int i = 1, j = n - 1; i < n / 2; ++i, --j) {
        const double A = re[i] + re[j], B = re[i] - re[j];
        const double C = im[i] + im[j], D = im[i] - im[j];
        re[forward ? i : j] = (A - D) * 0.5;
        re[forward ? j : i] = (A + D) * 0.5;
        im[forward ? i : j] = (C + B) * 0.5;
        im[forward ? j : i] = (C - B) * 0.5;
    }
    if (!forward) {
        hartleyTransform.hartley(re, n, 1);
        hartleyTransform.hartley(im, n, 1);
    }
}
