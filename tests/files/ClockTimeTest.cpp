#include "workbench/files/text/ClockTime.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

static constexpr std::int64_t second = 1000000000;

static std::string twoDigits(unsigned number) {
    return std::to_string(100 + number).substr(1);
}

// Against the calendar of the standard library, each day of five centuries; and no day beside them.
TEST(ClockTime, KnowsEveryDay) {
    using namespace std::chrono;
    for (sys_days day = 1700y / January / 1; day < sys_days(2201y / January / 1); day += days(1)) {
        const year_month_day date(day);
        const std::string text = std::to_string(static_cast<int>(date.year())) + '-' +
                                 twoDigits(static_cast<unsigned>(date.month())) + '-' +
                                 twoDigits(static_cast<unsigned>(date.day())) +
                                 "T23:59:59.000000001";
        const std::int64_t expected =
            (std::int64_t{day.time_since_epoch().count()} * 86400 + 86399) * second + 1;
        ASSERT_EQ(ClockTime::of(text).value_or(ClockTime()).nanoseconds, expected) << text;
    }
    for (const char* const none : {"2023-02-29", "2100-02-29", "2024-04-31", "2024-13-01",
                                   "2024-00-10", "2024-01-00", "1699-12-31", "2201-01-01"}) {
        EXPECT_FALSE(ClockTime::of(none)) << none;
    }
}

// Cut off or changed anywhere, a moment is another one or none, and nothing is read beyond its end.
TEST(ClockTime, TakesWholeMomentsAlone) {
    const std::string_view whole = "2024-01-05T10:20:30.123456789+01:30";
    EXPECT_EQ(ClockTime::of(whole)->nanoseconds, 1704444630123456789);
    EXPECT_EQ(ClockTime::of(whole)->sinceMidnight, 37230123456789);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const bool complete = length == 10 || length == 16 || length == 19 || length == 32 ||
                              (length > 20 && length < 30);
        EXPECT_EQ(ClockTime::of(whole.substr(0, length)).has_value(), complete) << length;
    }
    for (const char* const none : {"24:00", "10:60", "10:20:61", "10:20:30.1234567890", "1:20:30",
                                   "10:20:30Z", "2024-01-05Z", "2024-01-05T10:20:30+24:00", "12.5",
                                   "2024/01/05", "-024-01-05", "2024-01-05x10:20"}) {
        EXPECT_FALSE(ClockTime::of(none)) << none;
    }
}

// From the first moment of a column to the next one; NaN if one of them is refused.
static double secondsBetween(MomentColumn& column, std::string_view first, std::string_view next) {
    double seconds = std::nan("");
    const bool taken = column.read(first, seconds) && seconds == 0.0 && column.read(next, seconds);
    column.rewind();
    return taken ? seconds : std::nan("");
}

// A clock without a date goes on over midnight, either way; with dates nothing is added. The second
// pass gives the same as the first.
TEST(MomentColumn, CountsFromTheFirst) {
    struct Case {
        const char *first, *next;
        double apart;
    };
    for (const auto& [first, next, apart] :
         {Case{"23:59:59.75", "00:00:01", 1.25}, Case{"00:00:01", "23:59:59.75", -1.25},
          Case{"06:00", "17:59", 43140.0}, Case{"06:00", "18:01", -43140.0},
          Case{"2024-02-28T23:00", "2024-03-01T00:30", 91800.0},
          Case{"2024-02-28T23:00Z", "2024-02-28T23:00-0200", 7200.0}}) {
        MomentColumn column;
        EXPECT_EQ(secondsBetween(column, first, next), apart) << next;
        EXPECT_EQ(secondsBetween(column, first, next), apart) << next;
    }
}
