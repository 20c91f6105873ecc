#include "workbench/jobs/ConvolutionPlace.h"

#include <fmt/format.h>

ConvolutionPlace::ConvolutionPlace(const std::optional<SignalAxis>& signalAxis,
                                   const KernelZero& zero, bool linear, int lag) {
    const std::int64_t moved = linear && signalAxis ? 0 : zero.sample;
    axis = resultAxis(signalAxis, zero, -moved, false);
    if (moved + lag != 0) {
        movement = Movement{-moved - lag, moved == 0 ? 0.0 : zero.index, lag, zero.reason};
        if (linear && moved != 0) {
            movement->reason += moved == 1
                                    ? "; the sample before it stands at the end"
                                    : fmt::format("; the {} before it stand at the end", moved);
        }
    }
    turned = linear ? moved : moved + lag;
}
