#include "benchmarks/quality/disturbances.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>

double rootMeanSquare(const std::vector<double>& samples) {
    return std::sqrt(std::inner_product(samples.begin(), samples.end(), samples.begin(), 0.0) /
                     static_cast<double>(samples.size()));
}

std::vector<double> withWhiteNoise(std::vector<double> signal, double level, std::uint64_t seed) {
    return withColouredNoise(std::move(signal), level, 0.0, seed);
}

// The first value has the variance of all others.
std::vector<double> withColouredNoise(std::vector<double> signal, double level, double a,
                                      std::uint64_t seed) {
    std::mt19937_64 bits(seed);
    std::normal_distribution<double> normal(0.0, level * rootMeanSquare(signal));
    double value = normal(bits);
    for (double& sample : signal) {
        sample += value;
        value = a * value + std::sqrt(1.0 - a * a) * normal(bits);
    }
    return signal;
}

std::vector<double> counted(std::vector<double> signal, double peak, std::uint64_t seed) {
    std::mt19937_64 bits(seed);
    const double scale = peak / *std::max_element(signal.begin(), signal.end());
    for (double& sample : signal) {
        std::poisson_distribution<long> counts(std::max(0.0, scale * sample));
        sample = sample > 0.0 ? static_cast<double>(counts(bits)) / scale : 0.0;
    }
    return signal;
}
