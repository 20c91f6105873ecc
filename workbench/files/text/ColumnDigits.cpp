#include "workbench/files/text/ColumnDigits.h"

#include "workbench/files/text/CellText.h"

#include <algorithm>
#include <charconv>
#include <cmath>

static bool isExponent(char letter) {
    return letter == 'e' || letter == 'E' || letter == 'd' || letter == 'D';
}

// The number after the letter of an exponent; what no double has anyway is as good as 0.
static int exponentOf(std::string_view text) {
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
    }
    int exponent = 0;
    std::from_chars(text.data(), text.data() + text.size(), exponent);
    return std::abs(exponent) > 9999 ? 0 : exponent;
}

// One pass over the cell: most of the time that an axis takes to read is spent here.
void ColumnDigits::add(std::string_view cell) {
    int after = 0, counted = 0;
    bool fraction = false;
    std::size_t i = 0;
    for (; i < cell.size() && !isExponent(cell[i]); ++i) {
        const char letter = cell[i];
        if (isDigit(letter)) {
            after += fraction ? 1 : 0;
            counted += counted > 0 || letter != '0' ? 1 : 0;
        } else if (letter == '.' || letter == ',') {
            fraction = true;
        } else if (letter == 'x' || letter == 'X') {  // hexadecimal digits are exact
            places = significant = most;
            return;
        }
    }
    const int exponent = i < cell.size() ? exponentOf(cell.substr(i + 1)) : 0;
    places = std::clamp(after - exponent, places, most);
    significant = std::clamp(counted, significant, most);
}

double ColumnDigits::unit(double x) const {
    const double fixed = std::pow(10.0, -places);
    if (x == 0.0) {
        return fixed;
    }
    const double leading = std::floor(std::log10(std::abs(x)));
    return std::max(fixed, std::pow(10.0, leading - significant + 1));
}
