#include "kernels/contract/inputs.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <random>

namespace kernels {

// Fractions of 53 bits between -1 and 1, times 2^e with e between -spread and spread; all exact. A
// prime number of values: they meet each other at ever new distances.
static std::vector<double> noise(int spread) {
    std::mt19937_64 random(7);  // the standard fixes its bits, unlike those of the distributions
    std::vector<double> values(9973);
    for (double& value : values) {
        const std::int64_t fraction = static_cast<std::int64_t>(random()) >> 10;
        const int e = static_cast<int>(random() % static_cast<unsigned>(2 * spread + 1)) - spread;
        value = std::ldexp(static_cast<double>(fraction), e - 53);
    }
    return values;
}

// Every 13th value is one that arithmetic treats apart.
static std::vector<double> oddities() {
    using Limits = std::numeric_limits<double>;
    constexpr std::array odd = {0.0,
                                -0.0,
                                Limits::denorm_min(),
                                -3 * Limits::denorm_min(),
                                Limits::min(),
                                -Limits::max(),
                                Limits::infinity(),
                                -Limits::infinity(),
                                Limits::quiet_NaN()};
    std::vector<double> values = noise(4);
    for (std::size_t i = 0; i < values.size(); i += 13) {
        values[i] = odd[i / 13 % odd.size()];
    }
    return values;
}

const std::vector<KernelInput>& kernelInputs() {
    static const std::vector<KernelInput> all = {
        {"noise", noise(0)}, {"wide noise", noise(600)}, {"oddities", oddities()}};
    return all;
}

}  // namespace kernels
