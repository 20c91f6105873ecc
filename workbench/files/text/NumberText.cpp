#include "workbench/files/text/NumberText.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <locale>
#include <sstream>
#include <string>

// std::from_chars reports overflow and underflow alike; the stream fails on overflow alone.
static NumberKind readOutOfRange(const std::string& digits, double& value) {
    std::istringstream stream(digits);
    stream.imbue(std::locale::classic());
    return stream >> value ? NumberKind::finite : NumberKind::tooLarge;
}

static bool startsHexadecimal(std::string_view digits) {
    return digits.size() > 2 && digits[0] == '0' && (digits[1] == 'x' || digits[1] == 'X') &&
           (digits[2] == '.' || std::isxdigit(static_cast<unsigned char>(digits[2])) != 0);
}

// The number without its sign; a second sign is refused.
static NumberKind readMagnitude(std::string_view digits, double& value) {
    if (digits.empty() || digits.front() == '-') {
        return NumberKind::notANumber;
    }
    const bool hexadecimal = startsHexadecimal(digits);
    const char* begin = digits.data() + (hexadecimal ? 2 : 0);
    const char* end = digits.data() + digits.size();
    const auto format = hexadecimal ? std::chars_format::hex : std::chars_format::general;
    const auto [stop, error] = std::from_chars(begin, end, value, format);
    if (stop != end || error == std::errc::invalid_argument) {
        return NumberKind::notANumber;
    }
    if (error == std::errc::result_out_of_range) {
        return hexadecimal ? NumberKind::tooLarge : readOutOfRange(std::string(digits), value);
    }
    return std::isfinite(value) ? NumberKind::finite : NumberKind::nonfinite;
}

static NumberKind readSigned(std::string_view cell, double& value) {
    const bool negative = cell.starts_with('-');
    const bool sign = negative || cell.starts_with('+');
    const NumberKind kind = readMagnitude(cell.substr(sign ? 1 : 0), value);
    if (negative) {
        value = -value;
    }
    return kind;
}

NumberKind readNumber(std::string_view cell, bool decimalComma, double& value) {
    if (!decimalComma || cell.find(',') == std::string_view::npos) {
        return readSigned(cell, value);
    }
    std::string pointed(cell);
    std::replace(pointed.begin(), pointed.end(), ',', '.');
    return readSigned(pointed, value);
}
