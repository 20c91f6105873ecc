#pragma once

#include "workbench/signals/SignalAxis.h"
#include "workbench/treatment/KernelZero.h"

#include <cstdint>
#include <optional>

// Where the samples of a convolution stand. With the zero of the kernel at its sample c, sample i +
// c of the result belongs where sample i of the signal stands.
//
// A periodic result is turned by c, and keeps all of its samples. A linear one is not: with an axis
// its axis starts at the sum of both starts, c steps before the signal's. Without one it starts
// where the signal starts, and what belongs before that is left out.
struct ConvolutionPlace {
    std::optional<SignalAxis> axis;
    std::optional<Movement> movement;
    std::int64_t dropped = 0;  // samples at the start of a linear result that are left out
    std::int64_t turned = 0;   // samples by which a periodic result is moved to earlier places

    ConvolutionPlace() = default;
    // signalAxis: that of the signal, not the kernel's. lag: by which the samples are late.
    ConvolutionPlace(const std::optional<SignalAxis>& signalAxis, const KernelZero& zero,
                     bool linear, int lag);
};
