#include "workbench/calls/CallSignal.h"

#include "workbench/signals/MemoryReader.h"
#include "workbench/signals/valueCount.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

static SignalInfo infoOf(const CallSignal& signal) {
    SignalInfo info;
    info.source = SourceName(signal.name);
    info.format = "memory";
    info.channels = signal.channels;
    info.samples = signal.samples;
    info.rate = signal.rate;
    info.axis = signal.axis;
    return info;
}

static bool isOdd(double value) {
    return !std::isfinite(value);
}

SignalSource sourceOf(const CallSignal& signal, bool allowNonfinite) {
    if (signal.samples < 1 || signal.channels < 1 || signal.interleaved == nullptr) {
        throw WrongSignal(
            fmt::format("{} has no samples; give an array of one or more", signal.name));
    }
    const std::size_t count = valueCount(signal.samples, signal.channels);
    const double* const end = signal.interleaved + count;
    const double* const odd = allowNonfinite ? end : std::find_if(signal.interleaved, end, isOdd);
    if (odd != end) {
        throw WrongSignal(
            fmt::format("{}: sample {} is {}; replace it, or accept it with --allow-nonfinite",
                        signal.name, (odd - signal.interleaved) / signal.channels + 1, *odd));
    }
    return {SourceName(signal.name), [signal] {
                return std::make_unique<MemoryReader>(infoOf(signal), signal.interleaved, nullptr);
            }};
}

std::shared_ptr<const Signal> copyOf(const CallSignal& signal) {
    return std::make_shared<const Signal>(Signal{
        infoOf(signal),
        {signal.interleaved, signal.interleaved + valueCount(signal.samples, signal.channels)}});
}
