#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// A moment as text writes it, in whole nanoseconds, so that differences are exact:
//   a date of ISO 8601      2024-01-05, with a time after T or a blank, and Z or +01:00 after that
//   the time of a clock     10:15, 10:15:30 or 10:15:30.25
// Seconds have up to nine places after a point or a comma.
struct ClockTime {
    std::int64_t nanoseconds = 0;    // since 1970-01-01 UTC, or since midnight
    std::int64_t sinceMidnight = 0;  // of its own day and zone
    bool dated = false;
    std::size_t digits = 0;  // length of the text up to its zone

    // Nothing if the cell is not such a moment. Quotes around it are taken off.
    static std::optional<ClockTime> of(std::string_view cell);
};

// A column of moments: each as seconds since the first one, correctly rounded from nanoseconds.
// Clock times without a date pass midnight where they jump by more than twelve hours.
class MomentColumn {
public:
    // Moves the end of cell to before a zone. False if it is not a moment, or has a date while the
    // first one has none, or the other way round.
    bool read(std::string_view& cell, double& seconds);

    // Before the first cell is read again.
    void rewind() { last.reset(); }

    // Of the first moment, which there is: seconds since midnight, and its text.
    [[nodiscard]] double start() const;
    [[nodiscard]] const std::string& startText() const { return text; }
    [[nodiscard]] bool dated() const { return first.dated; }

private:
    ClockTime first;
    std::optional<std::int64_t> last;  // with whole days added
    std::string text;
};
