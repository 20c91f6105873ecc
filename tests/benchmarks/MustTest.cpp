#include "benchmarks/Must.h"

#include <gtest/gtest.h>

#include <vector>

// Worked by hand. One outlier moves neither median nor quartiles by much.
TEST(Figure, IsTheMedianWithHalfTheDistanceOfTheQuartiles) {
    const Figure odd = figureOf({1.0, 100.0, 3.0, 2.0, 4.0});
    EXPECT_EQ(odd.value, 3.0);
    EXPECT_EQ(odd.spread, 1.0);
    const Figure even = figureOf({8.0, 0.0, 4.0, 2.0});
    EXPECT_EQ(even.value, 3.0);
    EXPECT_EQ(even.spread, 1.75);  // from 1.5 to 5
    EXPECT_EQ(figureOf({7.0}).value, 7.0);
    EXPECT_EQ(figureOf({7.0}).spread, 0.0);
}

// A spell in which everything takes three times as long leaves the ratio as it is.
TEST(Figure, RatioIsTakenWithinATurn) {
    const Figure ratio = ratioOf({2.0, 6.0, 2.0}, {1.0, 3.0, 1.0});
    EXPECT_EQ(ratio.value, 2.0);
    EXPECT_EQ(ratio.spread, 0.0);
    EXPECT_EQ(ratioOf({8.0}, {1.0, 2.0, 4.0}).value, 4.0);
}

TEST(Figure, IsWrittenWithTheSpreadInItsLastDigits) {
    EXPECT_EQ(textOf({1.018, 0.031}), "1.02(3)");
    EXPECT_EQ(textOf({0.996, 0.0}), "1.00(0)");
    EXPECT_EQ(textOf({9.996, 0.4}), "10.0(4)");
    EXPECT_EQ(textOf({9.72, 1.74}), "9.7(17)");
    EXPECT_EQ(textOf({2367.4, 210.0}), "2367(210)");
}

TEST(Must, IsMissedOnlyBeyondTheSpread) {
    struct Case {
        Figure found;
        Standing expected;
    };
    for (const auto& [found, expected] :
         {Case{{1.0, 0.0}, Standing::met}, Case{{1.2, 0.5}, Standing::met},
          Case{{0.98, 0.03}, Standing::doubtful}, Case{{0.75, 0.25}, Standing::doubtful},
          Case{{0.98, 0.01}, Standing::missed}, Case{{0.0, 0.0}, Standing::missed}}) {
        EXPECT_EQ(standingOf(found, 1.0), expected) << textOf(found);
    }
}

TEST(Must, HoldsForItsRivalAtItsSizes) {
    const std::vector<Must> musts = {
        {"one", 1.0}, {"two", 0.5, {{8, 8}, {9, 9}}}, {"two", 0.8, {{9, 9}}}};
    EXPECT_EQ(leastOf(musts, "one", {3, 4}), 1.0);
    EXPECT_EQ(leastOf(musts, "two", {8, 8}), 0.5);
    EXPECT_EQ(leastOf(musts, "two", {9, 9}), 0.8);
    EXPECT_EQ(leastOf(musts, "two", {8, 9}), 0.0);
    EXPECT_EQ(leastOf(musts, Must::peak, {8, 8}), 0.0);
}
