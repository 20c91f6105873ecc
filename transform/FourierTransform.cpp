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
    kernels::radix2(re, im, n, sign);
    return n;
}

std::uint32_t FourierTransform::nextPowerOfTwo(int n) {
    return n < 2 ? 1U : std::bit_ceil(static_cast<std::uint32_t>(n));
}
