#include "platform/ArithmeticMode.h"

#include "tests/support/HostArithmetic.h"

#include <gtest/gtest.h>

#include <bit>
#include <utility>

// Bits that differ from mode to mode: a quotient that is rounded away from zero, of either sign, a
// product that is denormal, and one of a denormal number.
static std::vector<std::uint64_t> compute() {
    const volatile double one = 1.0, ten = 10.0, small = 1e-160, denormal = 1e-310;
    return {std::bit_cast<std::uint64_t>(one / ten), std::bit_cast<std::uint64_t>(-one / ten),
            std::bit_cast<std::uint64_t>(small * small),
            std::bit_cast<std::uint64_t>(denormal * 1e20)};
}

static std::pair<Rounding, bool> mode() {
    const ArithmeticMode current = ArithmeticMode::current();
    return {current.rounding, current.flushesDenormals};
}

static Rounding roundingOf(int ofC) {
    switch (ofC) {
        case FE_DOWNWARD:
            return Rounding::downward;
        case FE_UPWARD:
            return Rounding::upward;
        case FE_TOWARDZERO:
            return Rounding::towardZero;
        default:
            return Rounding::toNearest;
    }
}

static void expectStandardWithin(const std::vector<std::uint64_t>& standard) {
    const StandardArithmetic outer;
    const StandardArithmetic inner;
    EXPECT_EQ(compute(), standard);
    EXPECT_EQ(mode(), std::pair(Rounding::toNearest, false));
}

TEST(ArithmeticMode, IsDescribedSetAsideAndGivenBack) {
    const std::vector<std::uint64_t> standard = compute();
    EXPECT_EQ(mode(), std::pair(Rounding::toNearest, false));
    for (const auto& [rounding, flushed] : HostArithmetic::modes()) {
        const HostArithmetic host({rounding, flushed});
        const std::vector<std::uint64_t> inHostsMode = compute();
        EXPECT_NE(inHostsMode, standard);
        expectStandardWithin(standard);
        EXPECT_EQ(mode(), std::pair(roundingOf(rounding), flushed != 0));
        EXPECT_EQ(compute(), inHostsMode);
    }
}
