#include "workbench/module/pairing.h"

#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <algorithm>

void checkChannels(const SignalInfo& a, const SignalInfo& b) {
    if (a.channels != b.channels && a.channels != 1 && b.channels != 1) {
        throw Failure(
            fmt::format("{} has {} channels and {} has {}; the counts must be equal, or one "
                        "of them 1",
                        a.source.shown, a.channels, b.source.shown, b.channels));
    }
}

void checkLengths(const SignalInfo& a, std::int64_t lengthOfA, const SignalInfo& b,
                  std::int64_t lengthOfB, std::int64_t round) {
    if (lengthOfA != lengthOfB) {
        throw Failure(
            fmt::format("block {}: {} has {} samples and {} has {}; this method needs "
                        "equal lengths: --pad appends zeros to both",
                        round + 1, a.source.shown, lengthOfA, b.source.shown, lengthOfB));
    }
}

void checkKernel(const std::vector<double>& kernel, std::int64_t round, const std::string& name) {
    if (std::all_of(kernel.begin(), kernel.end(), [](double x) { return x == 0.0; })) {
        throw Failure(fmt::format("block {}: {} is all zero; give a kernel to deconvolve by",
                                  round + 1, name));
    }
}
