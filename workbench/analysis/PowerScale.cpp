#include "workbench/analysis/PowerScale.h"

#include "kernels/WorkWatch.h"

#include <algorithm>
#include <cmath>

PowerScale PowerScale::of(const std::vector<double>& samples) {
    double largest = 0.0;
    for (const double sample : samples) {
        largest = std::isfinite(sample) ? std::max(largest, std::abs(sample)) : largest;
    }
    constexpr int mostBits = 200;
    const bool inRange =
        largest >= std::ldexp(1.0, -mostBits) && largest <= std::ldexp(1.0, mostBits);
    return {.exponent = largest == 0.0 || inRange ? 0 : std::ilogb(largest)};
}

std::vector<double> scaled(const std::vector<double>& samples, int exponent) {
    kernels::WorkWatch::passed(4.0 * kernels::WorkWatch::element *
                               static_cast<double>(samples.size()));
    std::vector<double> moved = samples;
    if (exponent == 0) {
        return moved;
    }
    const double factor = std::ldexp(1.0, exponent);
    if (std::isnormal(factor)) {  // then a product is rounded as the scaling itself
        for (double& sample : moved) {
            sample *= factor;
        }
        return moved;
    }
    for (double& sample : moved) {
        sample = std::ldexp(sample, exponent);
    }
    return moved;
}
