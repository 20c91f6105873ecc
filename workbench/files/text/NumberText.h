#pragma once

#include <string_view>

enum class NumberKind { finite, nonfinite, tooLarge, notANumber };

// Reads the whole of a cell as a number, correctly rounded: decimal with an optional sign and
// exponent, hexadecimal after 0x, or nan, inf, infinity in any case. With decimalComma a comma is
// taken as a point. The value is set if the result is finite (what is too small for a double
// becomes 0) or nonfinite. Independent of the locale.
NumberKind readNumber(std::string_view cell, bool decimalComma, double& value);
