#include "transform/FourierPlan.h"

#include "transform/FourierTransform.h"

#include <cstdint>

FourierPlan::FourierPlan(int transformLength) : n(transformLength) {
    if (n > 0 && FourierTransform::nextPowerOfTwo(n) != static_cast<std::uint32_t>(n)) {
        chirp.emplace(n);
    }
}

void FourierPlan::transform(double* re, double* im, int sign) {
    if (chirp) {
        chirp->transform(re, im, sign);
    } else if (n > 0) {
        FourierTransform::radix2Transform(re, im, n, sign);
    }
}
