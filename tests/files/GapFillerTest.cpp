#include "workbench/files/text/GapFiller.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

static const std::vector<bool> whole = {false, false}, first = {true, false}, both = {true, true};

// Gaps of two columns that overlap, each as long as may be: every number on the line between its
// neighbours, to its rounding; rows come out in order, none before it is whole.
TEST(GapFiller, DrawsLinesThroughGapsOfAllLengths) {
    for (std::size_t length = 1; length <= GapFiller::longest; ++length) {
        GapFiller filler(2);
        std::vector<std::vector<double>> rows;
        const auto add = [&](const std::vector<double>& row, const std::vector<bool>& missing) {
            ASSERT_EQ(filler.add(row, missing), std::nullopt);
            while (filler.ready()) {
                filler.take(rows.emplace_back());
            }
        };
        add({-3.0, 5.0}, whole);
        add({0.0, 6.0}, first);
        EXPECT_EQ(rows.size(), 1U);
        for (std::size_t i = 1; i < length; ++i) {
            add({0.0, 0.0}, both);
        }
        EXPECT_EQ(filler.open(), 0U);
        add({8.0, 6.0}, whole);
        EXPECT_EQ(filler.open(), std::nullopt);
        ASSERT_EQ(rows.size(), length + 2);
        for (std::size_t k = 0; k < rows.size(); ++k) {
            const long double line =
                -3.0L + 11.0L * static_cast<long double>(k) / static_cast<long double>(length + 1);
            EXPECT_DOUBLE_EQ(rows[k][0], static_cast<double>(line));
            EXPECT_EQ(rows[k][1], k == 0 ? 5.0 : 6.0);
        }
        EXPECT_EQ(filler.filled(), static_cast<std::int64_t>(2 * length - 1));
    }
}

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
