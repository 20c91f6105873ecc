#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

// Makes missing numbers of rows on their way through: on the line from the last number of a column
// before a gap, a, to the first after it, b, the k-th of n missing ones is
//     (a (n + 1 - k) + b k) / (n + 1),
// and a if both are equal. Whole numbers on the line are exact. Holds as many rows as the longest
// gap has, and one.
class GapFiller {
public:
    static constexpr std::size_t longest = 10;  // so many in a row; more would be guessed

    explicit GapFiller(std::size_t columnCount) : last(columnCount), gaps(columnCount) {}

    // Appends a row; missing says which of its numbers there are to be made. Returns a column of
    // which that is not possible: nothing stands before its gap, or the gap is too long.
    std::optional<std::size_t> add(const std::vector<double>& row,
                                   const std::vector<bool>& missing);

    // A column that has a gap at the end of what was added.
    [[nodiscard]] std::optional<std::size_t> open() const;

    // Whether the first row is whole; then it can be taken.
    [[nodiscard]] bool ready() const;
    void take(std::vector<double>& row);

    [[nodiscard]] std::int64_t filled() const { return count; }

private:
    std::deque<std::vector<double>> rows;
    std::vector<std::optional<double>> last;  // number of each column
    std::vector<std::size_t> gaps;            // how many are missing since then
    std::int64_t count = 0;
};
