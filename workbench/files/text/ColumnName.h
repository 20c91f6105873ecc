#pragma once

#include <optional>
#include <string_view>

// A unit of time: value times seconds, over parts, is in seconds. Both are whole, so that no
// rounding comes with them.
struct TimeUnit {
    double seconds = 1.0, parts = 1.0;
};

// What the name of a column says about it as an axis.
struct ColumnName {
    enum class Kind { other, axis, time };

    // By its words (letters; case ignored):
    //   time  one is time, zeit, temps or t, or the name is the word for a unit, such as seconds. t
    //         with a unit that is not one of time is not a time: T [K].
    //         An axis called x or axis whose unit is one of time is a time, too: x-axis (second).
    //   axis  one is x, axis, index, sample, channel, kanal, n, offset, energy or frequency.
    explicit ColumnName(std::string_view name);
    ColumnName() = default;

    // Of a column of moments, whatever it is called: a time in seconds.
    static ColumnName ofMoments();

    Kind kind = Kind::other;

    // Of a time. The unit stands in brackets, after a slash, or last: ns, us, ms, s, min, h, d and
    // usual spellings of them; min and d are too short to be known last ("t_min" may be the
    // smallest t). A time without a unit is in seconds. Empty where a unit is not known: then
    // nothing is known about the rate.
    std::optional<TimeUnit> unit;
};
