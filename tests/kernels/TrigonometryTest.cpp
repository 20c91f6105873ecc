#include "kernels/trigonometry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <random>

// In units of the last place of a double of this size.
static double error(long double value, long double exact) {
    int exponent = 0;
    std::frexp(exact, &exponent);
    return static_cast<double>(std::ldexp(std::abs(value - exact), 53 - exponent));
}

// At the angles of the stages of a transform and of chirps of all lengths.
TEST(Trigonometry, IsWrongByHalfAnUlpAndSomeHundredths) {
    std::mt19937_64 generator(11);
    std::uniform_real_distribution<double> log2n(0.0, 29.0);
    double worst = 0.0;
    for (int i = 0; i < 100'000; ++i) {
        const auto n = static_cast<std::uint32_t>(std::exp2(i < 30 ? i : log2n(generator)));
        const auto q =
            static_cast<std::uint32_t>(i < 30 ? 1 : generator() % (2 * std::uint64_t{n}));
        const double angle = q * ((i % 2 == 0 ? std::numbers::pi : -std::numbers::pi) / n);
        const auto exact = static_cast<long double>(angle);
        const auto s = static_cast<long double>(kernels::sine(angle));
        const auto c = static_cast<long double>(kernels::cosine(angle));
        worst = std::max({worst, error(s, std::sin(exact)), error(c, std::cos(exact))});
    }
    EXPECT_LT(worst, 0.52);
    EXPECT_TRUE(std::signbit(kernels::sine(-0.0)) && !std::signbit(kernels::sine(0.0)));
}
