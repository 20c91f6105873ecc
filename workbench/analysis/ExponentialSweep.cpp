#include "workbench/analysis/ExponentialSweep.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

static double raisedCosine(double share) {
    return share < 1.0 ? 0.5 * (1.0 - std::cos(std::numbers::pi * share)) : 1.0;
}

std::vector<double> exponentialSweep(double from, double to, double seconds, double rate,
                                     double fade) {
    std::vector<double> samples(static_cast<std::size_t>(std::llround(seconds * rate)));
    const double L = std::log(to / from);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double t = static_cast<double>(i) / rate;
        const double phase =
            2.0 * std::numbers::pi * from * (seconds / L) * std::expm1(t * L / seconds);
        const double left = static_cast<double>(samples.size() - 1 - i) / rate;
        const double weight = fade > 0.0 ? raisedCosine(std::min(t, left) / fade) : 1.0;
        samples[i] = weight * std::sin(phase);
    }
    return samples;
}
