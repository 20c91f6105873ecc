#include "tests/support/BlurredLines.h"

#include <cmath>
#include <numeric>

static Signal normalised(Signal samples) {
    const double sum = std::accumulate(samples.begin(), samples.end(), 0.0);
    for (double& sample : samples) {
        sample /= sum;
    }
    return samples;
}

Signal peak(int n, double width) {
    Signal samples(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) {
        const double x = (i < n / 2 ? i : i - n) / width;
        samples[static_cast<std::size_t>(i)] = std::exp(-x * x);
    }
    return normalised(samples);
}

Signal decay(int n, double width) {
    Signal samples;
    for (int i = 0; i < n; ++i) {
        samples.push_back(std::exp(-i / width));
    }
    return normalised(samples);
}

Signal blurredLines(const Signal& kernel, double noiseHeight, std::uint64_t seed) {
    Signal lines(kernel.size());
    lines[kernel.size() / 3] = 1.0;
    lines[kernel.size() / 2] = 2.0;
    Signal y = laggingFold(lines, kernel);
    const Signal disturbance = noise(static_cast<int>(kernel.size()), seed);
    for (std::size_t i = 0; i < y.size(); ++i) {
        y[i] += noiseHeight * disturbance[i];
    }
    return y;
}
