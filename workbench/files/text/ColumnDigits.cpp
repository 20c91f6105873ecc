#include "workbench/files/text/ColumnDigits.h"

#include <algorithm>
#include <charconv>
#include <cmath>

static bool isDigit(char letter) {
    return letter >= '0' && letter <= '9';
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

void ColumnDigits::add(std::string_view cell) {
    if (cell.find_first_of("xX") != std::string_view::npos) {  // hexadecimal digits are exact
        places = significant = most;
        return;
    }
    const std::size_t end = std::min(cell.find_first_of("eEdD"), cell.size());
    int after = 0, counted = 0;
    bool fraction = false;
    for (const char letter : cell.substr(0, end)) {
        fraction = fraction || letter == '.' || letter == ',';
        if (isDigit(letter)) {
            after += fraction ? 1 : 0;
            counted += counted > 0 || letter != '0' ? 1 : 0;
        }
    }
    const int exponent = end < cell.size() ? exponentOf(cell.substr(end + 1)) : 0;
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
