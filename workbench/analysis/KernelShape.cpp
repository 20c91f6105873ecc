#include "workbench/analysis/KernelShape.h"

#include <algorithm>
#include <cmath>

static std::vector<double>::const_iterator largestOf(const std::vector<double>& kernel) {
    return std::max_element(kernel.begin(), kernel.end(),
                            [](double a, double b) { return std::abs(a) < std::abs(b); });
}

std::size_t supportOf(const std::vector<double>& kernel) {
    const auto largest = largestOf(kernel);
    const double least = largest == kernel.end() ? 0.0 : 1e-6 * std::abs(*largest);
    const auto last = std::find_if(kernel.rbegin(), kernel.rend(), [least](double value) {
        return value != 0.0 && std::abs(value) >= least;
    });
    return static_cast<std::size_t>(kernel.rend() - last);
}

// Samples are divided by the largest, so squares stay in the range of doubles.
KernelPeak peakOf(const std::vector<double>& kernel) {
    const auto largest = largestOf(kernel);
    if (largest == kernel.end() || *largest == 0.0) {
        return {};
    }
    KernelPeak peak{.index = static_cast<std::size_t>(largest - kernel.begin())};
    double mirrored = 0.0, squares = 0.0, sum = 0.0, moment = 0.0;
    for (std::size_t n = 0; n < kernel.size(); ++n) {
        const double value = kernel[n] / *largest;
        const std::size_t mirror = 2 * peak.index - n;  // beyond every index where it is below 0
        mirrored += mirror < kernel.size() ? value * (kernel[mirror] / *largest) : 0.0;
        squares += value * value;
        sum += std::abs(value);
        moment += static_cast<double>(n) * std::abs(value);
    }
    peak.correlation = mirrored / squares;
    peak.centroid = moment / sum;
    return peak;
}
