#include "signal/FoldEngine.h"

#include "tests/support/Guarded.h"
#include "tests/support/Signal.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

struct Lengths {
    int first, second;
};

}  // namespace

static Signal fold(const Signal& first, const Signal& second, int mode, int capacity) {
    Guarded result(static_cast<std::size_t>(capacity));
    EXPECT_EQ(1, FoldEngine().fold(first.data(), static_cast<int>(first.size()), second.data(),
                                   static_cast<int>(second.size()), result.data(), capacity, mode));
    return result.values();
}

namespace {

class FoldAgainstDefinition : public testing::TestWithParam<Lengths> {
protected:
    const Signal first = noise(GetParam().first, 1), second = noise(GetParam().second, 2);
    const int longer = std::max(GetParam().first, GetParam().second);
    Signal expected =
        first.size() < second.size() ? periodicFold(second, first) : periodicFold(first, second);
};

}  // namespace

// Same products, same order: no tolerance.
TEST_P(FoldAgainstDefinition, TimeDomainLagsByOneSample) {
    const Signal late =
        first.size() < second.size() ? laggingFold(second, first) : laggingFold(first, second);
    EXPECT_EQ(bits(fold(first, second, 0, longer)), bits(late));
}

TEST_P(FoldAgainstDefinition, FrequencyDomainHasNoLag) {
    const Signal result = fold(first, second, 1, longer);
    for (std::size_t n = 0; n < expected.size(); ++n) {
        EXPECT_NEAR(result[n], expected[n], longer * transformBound(longer)) << n;
    }
}

INSTANTIATE_TEST_SUITE_P(LongShortSwappedEmpty, FoldAgainstDefinition,
                         testing::Values(Lengths{1, 1}, Lengths{3, 8}, Lengths{8, 3}, Lengths{5, 2},
                                         Lengths{7, 7}, Lengths{5, 0}, Lengths{0, 5}, Lengths{0, 0},
                                         Lengths{64, 64}, Lengths{300, 17}));

// The modes part ways behind the last sample; an unknown mode succeeds without a trace.
TEST(FoldEngine, ResultBeyondTheLongerOperand) {
    const double u = Guarded::untouched;
    EXPECT_EQ(fold({1, 2, 3, 4}, {1, 0, 0, 0}, 0, 6), (Signal{4, 1, 2, 3, u, u}));
    EXPECT_EQ(fold({1, 2, 3, 4}, {1, 0, 0, 0}, 1, 6), (Signal{1, 2, 3, 4, 0, 0}));
    EXPECT_EQ(fold({1, 2}, {1}, 1, 9), (Signal{1, 2, 0, 0, 0, 0, 0, 0, 0}));
    for (const int mode : {-1, 2, 3}) {
        EXPECT_EQ(fold({1, 2}, {1}, mode, 3), (Signal{u, u, u}));
    }
}

// A refused run would fall over the missing result array if it wrote to it.
TEST(FoldEngine, RefusesAResultShorterThanTheLongerOperand) {
    const Signal a = {1, 2, 3, 4}, b = {1, 1};
    for (const int mode : {0, 1, 2}) {
        EXPECT_EQ(0, FoldEngine().fold(b.data(), 2, a.data(), 4, nullptr, 3, mode));
    }
}
