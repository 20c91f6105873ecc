#pragma once

#include "transform/ChirpPlan.h"

#include <optional>

// The Fourier transforms of one length, both signs, made ready to be repeated: each gives the bits
// of FourierTransform::transform. A plan for a power of two holds nothing, one for another length
// is a ChirpPlan. In two threads at once each needs a plan of its own.
class FourierPlan {
public:
    // Throws std::bad_alloc, as ChirpPlan does. A length below 1 has no transform.
    explicit FourierPlan(int transformLength);

    [[nodiscard]] int length() const { return n; }

    // n samples, in place. Allocates nothing.
    void transform(double* re, double* im, int sign);

private:
    int n;
    std::optional<ChirpPlan> chirp;
};
