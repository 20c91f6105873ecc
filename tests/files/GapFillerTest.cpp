#include "workbench/files/text/GapFiller.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

static const std::vector<bool> whole = {false, false}, first = {true, false}, both = {true, true};

// Adds a row, and takes those that are whole then.
static void pass(GapFiller& filler, const std::vector<double>& row,
                 const std::vector<bool>& missing, std::vector<std::vector<double>>& rows) {
    EXPECT_EQ(filler.add(row, missing), std::nullopt);
    while (filler.ready()) {
        filler.take(rows.emplace_back());
    }
}

namespace {

class GapLengths : public testing::TestWithParam<std::size_t> {};

}  // namespace

// Gaps of two columns that overlap: every number on the line between its neighbours, to its
// rounding; rows come out in order, none before it is whole.
TEST_P(GapLengths, AreFilledByLines) {
    const std::size_t length = GetParam();
    GapFiller filler(2);
    std::vector<std::vector<double>> rows;
    pass(filler, {-3.0, 5.0}, whole, rows);
    pass(filler, {0.0, 6.0}, first, rows);
    for (std::size_t i = 1; i < length; ++i) {
        pass(filler, {0.0, 0.0}, both, rows);
    }
    EXPECT_TRUE(filler.open() == 0U && rows.size() == 1);
    pass(filler, {8.0, 6.0}, whole, rows);
    EXPECT_TRUE(filler.open() == std::nullopt && rows.size() == length + 2 &&
                filler.filled() == static_cast<std::int64_t>(2 * length - 1));
    for (std::size_t k = 0; k < rows.size(); ++k) {
        const long double line =
            -3.0L + 11.0L * static_cast<long double>(k) / static_cast<long double>(length + 1);
        EXPECT_DOUBLE_EQ(rows[k][0], static_cast<double>(line));
        EXPECT_EQ(rows[k][1], std::min(5.0 + static_cast<double>(k), 6.0));
    }
}
INSTANTIATE_TEST_SUITE_P(UpToTheLongest, GapLengths,
                         testing::Range(std::size_t{1}, GapFiller::longest + 1));

// Neither extreme numbers nor long files break it; what it cannot fill it names.
TEST(GapFiller, NamesWhatItCannotFill) {
    EXPECT_EQ(GapFiller(2).add({0.0, 1.0}, first), 0U);
    GapFiller filler(2);
    filler.add({1.7e308, 1.0}, whole);
    filler.add({0.0, 1.0}, first);
    filler.add({-1.7e308, 1.0}, whole);
    std::vector<double> row;
    filler.take(row);
    filler.take(row);
    EXPECT_EQ(row[0], 0.0);
    for (std::size_t i = 0; i < GapFiller::longest; ++i) {
        EXPECT_EQ(filler.add({0.0, 1.0}, {false, true}), std::nullopt);
    }
    EXPECT_EQ(filler.add({0.0, 1.0}, {false, true}), 1U);
}
