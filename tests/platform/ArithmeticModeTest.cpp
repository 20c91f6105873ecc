#include "platform/ArithmeticMode.h"

#include "tests/support/HostArithmetic.h"

#include <gtest/gtest.h>

#include <bit>
#include <utility>

// Bits that differ from mode to mode: a quotient that is rounded away from zero, of either sign,
// and a product that is denormal.
static std::vector<std::uint64_t> compute() {
    const volatile double one = 1.0, ten = 10.0, small = 1e-160;
    return {std::bit_cast<std::uint64_t>(one / ten), std::bit_cast<std::uint64_t>(-one / ten),
            std::bit_cast<std::uint64_t>(small * small)};
}

static std::pair<Rounding, bool> mode() {
    const ArithmeticMode current = ArithmeticMode::current();
    return {current.rounding, current.flushesDenormals};
}

TEST(ArithmeticMode, IsDescribedSetAsideAndGivenBack) {
    const std::vector<std::uint64_t> standard = compute();
    EXPECT_EQ(mode(), std::pair(Rounding::toNearest, false));
    for (const auto& [rounding, flushes] : HostArithmetic::modes()) {
        const HostArithmetic host({rounding, flushes});
        const Rounding expected = rounding == FE_DOWNWARD     ? Rounding::downward
                                  : rounding == FE_UPWARD     ? Rounding::upward
                                  : rounding == FE_TOWARDZERO ? Rounding::towardZero
                                                              : Rounding::toNearest;
        const std::vector<std::uint64_t> inHostsMode = compute();
        EXPECT_NE(inHostsMode, standard);
        {
            const StandardArithmetic outer;
            const StandardArithmetic inner;
            EXPECT_EQ(compute(), standard);
            EXPECT_EQ(mode(), std::pair(Rounding::toNearest, false));
        }
        EXPECT_EQ(mode(), std::pair(expected, flushes));
        EXPECT_EQ(compute(), inHostsMode);
    }
}
