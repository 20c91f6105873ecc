#include "workbench/treatment/KernelZero.h"

#include "workbench/analysis/KernelShape.h"
#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <utility>

// Columns are rounded: a zero that near a sample stands at the sample.
static constexpr double nearSample = 0.01;

static KernelZero atSample(std::int64_t sample, std::string reason) {
    return {static_cast<double>(sample), sample, std::move(reason)};
}

// The zero of an axis may lie outside the kernel: a response that was kept from 5 ms on.
static KernelZero zeroOfAxis(const SignalInfo& kernel) {
    const double index = -kernel.axis->start / kernel.axis->step;
    const double nearest =
        std::clamp(std::round(index), 0.0, static_cast<double>(kernel.samples - 1));
    KernelZero zero{index, static_cast<std::int64_t>(nearest), ""};
    if (std::abs(index - std::round(index)) < nearSample) {
        zero.index = std::round(index);
    }
    zero.reason = fmt::format("the axis of the kernel has its zero at sample {:.6g}", zero.index);
    return zero;
}

static std::optional<KernelZero> zeroOfPeak(const Signal& kernel) {
    std::optional<KernelZero> zero;
    for (int channel = 0; channel < kernel.info.channels; ++channel) {
        const KernelPeak peak = peakOf(channelOf(kernel, channel));
        const auto sample = static_cast<std::int64_t>(peak.index);
        if (peak.correlation < symmetricFrom || (zero && zero->sample != sample)) {
            return std::nullopt;
        }
        if (!zero) {
            zero = atSample(sample, fmt::format("the kernel is a symmetric peak about sample {} "
                                                "(centroid {:.2f})",
                                                sample, peak.centroid));
        }
    }
    return zero;
}

static KernelZero zeroOfMaximum(const Signal& kernel) {
    const KernelPeak peak = peakOf(channelOf(kernel, 0));
    return atSample(static_cast<std::int64_t>(peak.index),
                    fmt::format("the kernel is largest at sample {}", peak.index));
}

// Sound has a rate, and starts when it starts; text without an axis has neither.
static KernelZero likelyZero(const Signal& kernel) {
    if (kernel.info.axis) {
        return zeroOfAxis(kernel.info);
    }
    if (kernel.info.rate == 0.0) {
        if (std::optional<KernelZero> peak = zeroOfPeak(kernel)) {
            return *peak;
        }
    }
    return atSample(0, "the kernel starts at its zero");
}

KernelZero zeroOf(const Signal& kernel, const Origin& origin) {
    const std::string& name = kernel.info.source.shown;
    switch (origin.kind) {
        case Origin::Kind::axis:
            if (!kernel.info.axis) {
                throw Failure(fmt::format(
                    "{} has no axis; say with --origin INDEX which of its samples, counted from 0, "
                    "stands at zero",
                    name));
            }
            return zeroOfAxis(kernel.info);
        case Origin::Kind::maximum:
            return zeroOfMaximum(kernel);
        case Origin::Kind::index:
            if (origin.index >= kernel.info.samples) {
                throw Failure(fmt::format("--origin {}: {} has {} samples, counted from 0",
                                          origin.index, name, kernel.info.samples));
            }
            return atSample(
                origin.index,
                fmt::format("the zero of the kernel was given as sample {}", origin.index));
        case Origin::Kind::none:
            return {};
        default:
            return likelyZero(kernel);
    }
}

std::string Movement::text() const {
    const std::int64_t distance = std::abs(samples);
    std::string why = kernelZero != 0.0 ? reason : "";
    if (lag != 0) {
        why += why.empty() ? "" : ", and ";
        why += "the time domain lags by one sample";
    }
    return fmt::format("moved by {} sample{} to {} ones: {}", distance, distance == 1 ? "" : "s",
                       samples > 0 ? "later" : "earlier", why);
}

std::optional<SignalAxis> resultAxis(const std::optional<SignalAxis>& signal,
                                     const KernelZero& zero, std::int64_t moved, bool divides) {
    std::optional<SignalAxis> axis = signal;
    if (axis) {
        const double left = divides ? zero.index - static_cast<double>(moved)
                                    : -zero.index - static_cast<double>(moved);
        axis->start += left * axis->step;
    }
    return axis;
}
