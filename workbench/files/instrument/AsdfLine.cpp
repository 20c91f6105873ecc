#include "workbench/files/instrument/AsdfLine.h"

#include "workbench/files/text/NumberText.h"

#include <algorithm>
#include <cctype>
#include <string>

namespace {

using Kind = AsdfLine::Item::Kind;

// What the first letter of an item says.
struct Lead {
    Kind kind;
    std::string digits;  // that it stands for
};

}  // namespace

static bool isDigit(char letter) {
    return letter >= '0' && letter <= '9';
}

static Lead digitAfter(Kind kind, const char* sign, char letter, char before) {
    return {kind, std::string(sign) + static_cast<char>('0' + (letter - before))};
}

static Lead leadOf(char letter) {
    if (isDigit(letter) || letter == '+' || letter == '-' || letter == '.') {
        return {Kind::number, std::string(1, letter)};
    }
    if (letter >= '@' && letter <= 'I') {
        return digitAfter(Kind::number, "", letter, '@');
    }
    if (letter >= 'a' && letter <= 'i') {
        return digitAfter(Kind::number, "-", letter, '`');
    }
    if (letter == '%') {
        return {Kind::difference, "0"};
    }
    if (letter >= 'J' && letter <= 'R') {
        return digitAfter(Kind::difference, "", letter, 'I');
    }
    if (letter >= 'j' && letter <= 'r') {
        return digitAfter(Kind::difference, "-", letter, 'i');
    }
    if (letter >= 'S' && letter <= 'Z') {
        return digitAfter(Kind::repeat, "", letter, 'R');
    }
    return letter == 's' ? Lead{Kind::repeat, "9"}
                         : Lead{letter == '?' ? Kind::missing : Kind::wrong, ""};
}

// Of an exponent at the front: E with a sign. Without one, E is a number that begins with 5.
static std::size_t exponentLength(std::string_view text) {
    const bool begins = text.size() > 2 && (text[0] == 'E' || text[0] == 'e') &&
                        (text[1] == '+' || text[1] == '-') && isDigit(text[2]);
    std::size_t length = begins ? 3 : 0;
    while (begins && length < text.size() && isDigit(text[length])) {
        ++length;
    }
    return length;
}

AsdfLine::Item AsdfLine::next() {
    rest.remove_prefix(std::min(rest.find_first_not_of(" \t,;"), rest.size()));
    if (rest.empty()) {
        return {};
    }
    const Lead lead = leadOf(rest.front());
    const auto isMore = [](char letter) { return isDigit(letter) || letter == '.'; };
    std::size_t length = 1;
    while (length < rest.size() && isMore(rest[length])) {
        ++length;
    }
    if (std::isalpha(static_cast<unsigned char>(rest.front())) == 0) {
        length += exponentLength(rest.substr(length));
    }
    Item item{lead.kind, 0.0, rest.substr(0, length)};
    rest.remove_prefix(length);
    const std::string digits = lead.digits + std::string(item.text.substr(1));
    if (item.kind != Kind::missing && readNumber(digits, false, item.value) != NumberKind::finite) {
        item.kind = Kind::wrong;
    }
    return item;
}
