#include "workbench/files/text/EvenSteps.h"

#include "tests/support/Signal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

namespace {

struct Steps {
    double lowest = 0.0, highest = 0.0;
};

}  // namespace

static bool passes(const std::vector<double>& points, double start, double step, double error) {
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (std::abs(points[i] - start - static_cast<double>(i) * step) > error + 1e-12) {
            return false;
        }
    }
    return true;
}

// The steps of all lines that pass within so much of every point (i, points[i]), if there are any.
// The extreme ones go through the ends of two points' errors, so all pairs of ends are tried.
static std::optional<Steps> linesWithin(const std::vector<double>& points, double error) {
    Steps found{std::numeric_limits<double>::infinity(), 0.0};
    for (std::size_t pair = 0; pair < 4 * points.size() * points.size(); ++pair) {
        const std::size_t i = pair / 4 % points.size(), k = pair / 4 / points.size();
        const double first = points[i] + (pair % 2 == 0 ? error : -error);
        const double second = points[k] + (pair % 4 < 2 ? error : -error);
        const double step = (second - first) / (static_cast<double>(k) - static_cast<double>(i));
        if (i < k && passes(points, first - static_cast<double>(i) * step, step, error)) {
            found = {std::min(found.lowest, step), std::max(found.highest, step)};
        }
    }
    return found.highest > 0.0 ? std::optional(found) : std::nullopt;
}

static ColumnDigits tenths() {
    ColumnDigits digits;
    digits.add("0.1");
    return digits;
}

// Nine points at random places about an even axis, more and less far than rounding to tenths moves
// them.
static std::vector<double> columnOf(int number) {
    const Signal places = noise(9, static_cast<std::uint64_t>(number));
    std::vector<double> points;
    for (const double place : places) {
        const auto i = static_cast<double>(points.size());
        const double exact = (0.37 + 0.001 * number) * i + 0.06 * place;
        points.push_back(std::nearbyint(10.0 * exact) / 10.0);
    }
    return points;
}

static void expectSteps(const EvenSteps& steps, const Steps& expected) {
    const auto [lowest, highest] = steps.range();
    EXPECT_TRUE(steps.even());
    EXPECT_LE(lowest, expected.lowest + 1e-12);
    EXPECT_GE(highest, expected.highest - 1e-12);
    EXPECT_NEAR(highest - lowest, expected.highest - expected.lowest, 0.1 / 8.0);
    EXPECT_GE(steps.step(), lowest);
    EXPECT_LE(steps.step(), highest);
}

// An eighth of a digit more than the half decides nothing.
TEST(EvenSteps, AreThoseOfAllLinesThroughTheRoundedPoints) {
    int even = 0, uneven = 0;
    for (int number = 0; number < 300; ++number) {
        const std::vector<double> points = columnOf(number);
        EvenSteps steps(tenths());
        const bool accepted = std::all_of(points.begin(), points.end(),
                                          [&](double point) { return steps.accept(point); });
        const std::optional<Steps> exactly = linesWithin(points, 0.05);
        const bool open = !exactly && linesWithin(points, 0.05 + 0.1 / 8.0);
        if (steps.looselyEven() || steps.exact() || open) {
            continue;
        }
        ++(exactly ? even : uneven);
        ASSERT_EQ(accepted, exactly.has_value()) << number;
        if (exactly) {
            expectSteps(steps, *exactly);
        }
    }
    EXPECT_GT(std::min(even, uneven), 30);
}

namespace {

struct DigitsCase {
    std::vector<const char*> cells;
    double x, unit;
};

class Digits : public testing::TestWithParam<DigitsCase> {};

}  // namespace

TEST_P(Digits, LeaveAUnitAboutANumber) {
    ColumnDigits digits;
    for (const char* const cell : GetParam().cells) {
        digits.add(cell);
    }
    EXPECT_NEAR(digits.unit(GetParam().x), GetParam().unit, 1e-9 * GetParam().unit);
}
INSTANTIATE_TEST_SUITE_P(
    Kinds, Digits,
    testing::Values(DigitsCase{{"0", "0.003", "-10,25"}, 10.25, 1e-3},     // fixed
                    DigitsCase{{"0.00277778", "10.0028"}, 10.0028, 1e-4},  // significant
                    DigitsCase{{"2.77778e-03", "1.00000E+01"}, 10.0, 1e-4},
                    DigitsCase{{"9.9", "10"}, 10.0, 0.1},  // zeros left out
                    DigitsCase{{"3000", "4e3"}, 3000.0, 1.0},
                    DigitsCase{{"0.1", "1e+2"}, 0.0, 0.1}));
