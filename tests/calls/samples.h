#pragma once

#include "workbench/calls/CallSignal.h"
#include "workbench/module/ModuleLibrary.h"

#include <cmath>
#include <cstddef>
#include <memory>
#include <random>
#include <string>
#include <vector>

using Samples = std::vector<double>;

inline std::shared_ptr<const ModuleLibrary> fendra() {
    static const auto library =
        std::make_shared<const ModuleLibrary>(ModuleLibrary::standardFile());
    return library;
}

// The same on every machine, from -1 to 1.
inline Samples noise(std::size_t count, unsigned seed) {
    std::mt19937 random(seed);
    Samples samples(count);
    for (double& sample : samples) {
        sample = static_cast<double>(random()) / 2147483648.0 - 1.0;
    }
    return samples;
}

// A smooth peak in the middle, of sum 1 as far as it lies within.
inline Samples peak(std::size_t count) {
    Samples samples(count);
    for (std::size_t i = 0; i < count; ++i) {
        const double x = (static_cast<double>(i) - static_cast<double>(count / 2)) / 4.0;
        samples[i] = 0.14 * std::exp(-x * x);
    }
    return samples;
}

inline CallSignal signalOf(const Samples& samples, int channels = 1,
                           const std::string& name = "signal") {
    return {name, samples.data(), std::ssize(samples) / channels, channels};
}
