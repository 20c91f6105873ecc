#include "tests/support/Signal.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <limits>
#include <random>

Signal noise(int n, std::uint64_t seed) {
    std::mt19937_64 random(seed);
    Signal samples(static_cast<std::size_t>(n));
    for (double& sample : samples) {
        sample = static_cast<double>(static_cast<std::int64_t>(random())) * 0x1p-63;
    }
    return samples;
}

Signal periodicFold(const Signal& a, const Signal& b) {
    Signal c(a.size());
    for (std::size_t n = 0; n < a.size(); ++n) {
        for (std::size_t k = 0; k < b.size(); ++k) {
            c[n] += b[k] * a[(n + a.size() - k) % a.size()];
        }
    }
    return c;
}

Signal laggingFold(const Signal& a, const Signal& b) {
    Signal c = periodicFold(a, b);
    std::rotate(c.begin(), c.end() - (c.empty() ? 0 : 1), c.end());
    return c;
}

std::vector<std::uint64_t> bits(const Signal& samples) {
    std::vector<std::uint64_t> result;
    for (const double sample : samples) {
        result.push_back(std::bit_cast<std::uint64_t>(sample));
    }
    return result;
}

double transformBound(int n) {
    return (n + 32) * std::numeric_limits<double>::epsilon();
}
