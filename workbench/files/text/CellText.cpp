#include "workbench/files/text/CellText.h"

#include "workbench/files/text/CellCutter.h"
#include "workbench/files/text/ClockTime.h"

#include <algorithm>
#include <array>

static constexpr std::string_view minusSign = "\xe2\x88\x92";

// Without quotes, and with signs that readNumber knows.
static std::string plainText(std::string_view cell) {
    std::string text(withoutQuotes(cell));
    for (std::size_t at = 0; (at = text.find(minusSign, at)) != std::string::npos;) {
        text.erase(at, minusSign.size() - 1);
        text[at] = '-';
    }
    const std::size_t exponent = text.find_first_of("dD");
    const bool hexadecimal = text.find_first_of("xX") != std::string::npos;
    if (!hexadecimal && exponent != std::string::npos && exponent > 0 &&
        (isDigit(text[exponent - 1]) || text[exponent - 1] == '.' || text[exponent - 1] == ',')) {
        text[exponent] = 'e';
    }
    return text;
}

// Whether the digits stand in groups of three, with the same sign between all of them: 12'345,
// 1.234.567, 1,234.5.
static bool hasThousands(std::string_view text) {
    text.remove_prefix(text.starts_with('-') || text.starts_with('+') ? 1 : 0);
    const std::size_t head = text.find_first_not_of("0123456789");
    if (head == 0 || head > 3 || head == std::string_view::npos) {
        return false;
    }
    static constexpr std::array<std::string_view, 7> separators = {
        "'", " ", ",", ".", "\xc2\xa0", "\xe2\x80\xaf", "\xe2\x80\x99"};
    for (const std::string_view separator : separators) {
        std::string_view rest = text.substr(head);
        int groups = 0;
        while (rest.starts_with(separator) && rest.size() >= separator.size() + 3 &&
               std::all_of(rest.data() + separator.size(), rest.data() + separator.size() + 3,
                           isDigit)) {
            rest.remove_prefix(separator.size() + 3);
            ++groups;
        }
        const bool ends = rest.empty() || rest.front() == '.' || rest.front() == ',';
        if (groups > 0 && ends) {
            return true;
        }
    }
    return false;
}

static CellReader::Kind kindOf(NumberKind kind) {
    switch (kind) {
        case NumberKind::finite:
            return CellReader::Kind::finite;
        case NumberKind::nonfinite:
            return CellReader::Kind::nonfinite;
        case NumberKind::tooLarge:
            return CellReader::Kind::tooLarge;
        case NumberKind::notANumber:
            break;
    }
    return CellReader::Kind::notANumber;
}

CellReader::Kind CellReader::readWithComma(std::string_view& cell, double& value) {
    std::replace(plain.begin(), plain.end(), ',', '.');
    const Kind kind = kindOf(readNumber(plain, false, value));
    if (kind == Kind::notANumber || sign == '.') {
        return kind == Kind::notANumber ? kind : Kind::otherSign;
    }
    sign = ',';
    cell = plain;
    return kind;
}

CellReader::Kind CellReader::readOdd(std::string_view& cell, double& value) {
    if (isMissing(cell, options)) {
        return Kind::missing;
    }
    plain = plainText(cell);
    const bool comma = plain.find(',') != std::string::npos;
    const bool point = plain.find('.') != std::string::npos;
    if ((comma && point) || std::count(plain.begin(), plain.end(), comma ? ',' : '.') > 1) {
        return hasThousands(plain) ? Kind::thousands : Kind::notANumber;
    }
    if (comma) {
        return readWithComma(cell, value);
    }
    const Kind kind = kindOf(readNumber(plain, false, value));
    if (kind == Kind::notANumber) {
        return hasThousands(plain) ? Kind::thousands : kind;
    }
    if (point && sign == ',') {
        return Kind::otherSign;
    }
    sign = point ? '.' : sign;
    cell = plain;
    return kind;
}

bool isMissing(std::string_view cell, const TextOptions& options) {
    static constexpr std::array<std::string_view, 3> words = {"na", "n/a", "null"};
    cell = withoutQuotes(cell);
    const auto isCell = [cell](std::string_view word) {
        return std::equal(word.begin(), word.end(), cell.begin(), cell.end(), [](char a, char b) {
            return a == (b >= 'A' && b <= 'Z' ? static_cast<char>(b + 32) : b);
        });
    };
    return cell.empty() || cell == options.missing ||
           std::any_of(words.begin(), words.end(), isCell);
}

bool isDatum(std::string_view cell, const TextOptions& options) {
    if (isMissing(cell, options)) {
        return true;
    }
    const std::string text = plainText(cell);
    double ignored = 0.0;
    if (readNumber(text, true, ignored) != NumberKind::notANumber || ClockTime::of(text)) {
        return true;
    }
    return text.find_first_not_of("0123456789+-.,:'/") == std::string::npos &&
           std::any_of(text.begin(), text.end(), isDigit);
}
