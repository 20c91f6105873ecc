#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// What stands in some columns of a line, counted from 0, without blanks around it; empty beyond the
// end of the line.
std::string_view field(std::string_view line, std::size_t begin, std::size_t width);

// A whole number. Empty if the text is not one.
std::optional<std::int64_t> wholeNumber(std::string_view text);

// A real number as Fortran writes it: 0.5, 5.0E-01, 5.0D-01, 0.5-100, NaN. Empty if the text is not
// one, or beyond the range of doubles.
std::optional<double> realNumber(std::string_view text);

// A name with its unit, "Force (N)", in its parts; a name without a unit has an empty one.
struct NameAndUnit {
    std::string name, unit;
};
NameAndUnit splitUnit(const std::string& name);

// The first bytes of a text, as many whole UTF-8 characters as fit.
std::string_view cutTo(std::string_view text, std::size_t most);
