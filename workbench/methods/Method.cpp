#include "workbench/methods/Method.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>

std::vector<const Method*> Method::of(std::int32_t direction) {
    std::vector<const Method*> some;
    std::copy_if(all().begin(), all().end(), std::back_inserter(some),
                 [=](const Method* method) { return method->direction == direction; });
    return some;
}

const Method* Method::selectedBy(const FendraSettings& settings) {
    const auto found = std::find_if(all().begin(), all().end(), [&](const Method* method) {
        return method->direction == settings.direction && method->code == settings.method;
    });
    return found == all().end() ? nullptr : *found;
}

double negligibleWork(double /*length*/, double /*shorter*/, const FendraSettings& /*settings*/) {
    return 0.0;
}

double negligibleMemory(double /*length*/) {
    return 0.0;
}

std::vector<std::string> noRemarks(const Evidence& /*evidence*/) {
    return {};
}

std::vector<std::string> remarksOnAmplification(const Evidence& evidence) {
    constexpr double tooMuch = 0.5;
    if (evidence.noiseEnergy) {
        const double share = std::sqrt(*evidence.noiseEnergy / evidence.resultEnergy);
        if (!(share > tooMuch)) {
            return {};
        }
        return {fmt::format(
            "the noise in the result is {:.2g} times as strong as the whole result: the "
            "division amplifies it; try --auto, which keeps what the data carry",
            share)};
    }
    constexpr double tooStrong = 100.0;
    const double factor = std::sqrt(evidence.resultEnergy / evidence.signalEnergy);
    if (!(factor * evidence.kernel.largest > tooStrong)) {
        return {};
    }
    return {
        fmt::format("the result is {:.2g} times as strong as the signal, which the kernel does "
                    "not explain: amplified noise; try --auto, which keeps what the data carry",
                    factor)};
}
