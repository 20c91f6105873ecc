#pragma once

#include "workbench/signals/SignalAxis.h"
#include "workbench/treatment/KernelZero.h"

#include <cstdint>
#include <optional>

// Where the samples of a convolution stand. With the zero of the kernel at its sample c, sample i +
// c of the result belongs where sample i of the signal stands.
//
// A result is turned by c: the c samples that belong before the signal's first stand at the end,
// and none is lost. A linear result with an axis stays as it is, since its axis starts at the sum
// of both starts, c steps before the signal's. A periodic result is turned by its lag as well; a
// linear one is made without it.
struct ConvolutionPlace {
    std::optional<SignalAxis> axis;
    std::optional<Movement> movement;
    std::int64_t turned = 0;  // samples at the start that stand at the end

    ConvolutionPlace() = default;
    // signalAxis: that of the signal, not the kernel's. lag: by which the samples are late.
    ConvolutionPlace(const std::optional<SignalAxis>& signalAxis, const KernelZero& zero,
                     bool linear, int lag);
};
