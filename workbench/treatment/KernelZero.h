#pragma once

#include "workbench/signals/Signal.h"
#include "workbench/treatment/Treatment.h"

#include <cstdint>
#include <optional>
#include <string>

// The sample of a kernel that stands at zero, counted from 0; and why.
struct KernelZero {
    double index = 0.0;       // may lie between samples, and outside the kernel
    std::int64_t sample = 0;  // the nearest sample of the kernel: by it a result is moved
    std::string reason;
};

// Failure if the origin is to be the axis of a kernel that has none, or an index beyond its end.
KernelZero zeroOf(const Signal& kernel, const Origin& origin);

// How far a result was moved, and why.
struct Movement {
    std::int64_t samples = 0;  // positive: it came early, and was moved to later samples
    double kernelZero = 0.0;
    int lag = 0;  // of the time domain, taken off
    std::string reason;

    // "moved by 41 samples to later ones: the kernel's axis has its zero at sample 40, ..."
    [[nodiscard]] std::string text() const;
};

// The axis of a result that was moved along with a kernel's zero, from the axis of its signal: of a
// deconvolution it is the difference of both axes, of a convolution their sum.
//     moved   samples by which the result was moved to later ones, without the lag
std::optional<SignalAxis> resultAxis(const std::optional<SignalAxis>& signal,
                                     const KernelZero& zero, std::int64_t moved, bool divides);
