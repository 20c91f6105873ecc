#include "workbench/files/instrument/fields.h"

#include "workbench/files/text/CellCutter.h"
#include "workbench/files/text/NumberText.h"

#include <algorithm>
#include <charconv>

std::string_view field(std::string_view line, std::size_t begin, std::size_t width) {
    return begin < line.size() ? trimmed(line.substr(begin, width)) : std::string_view();
}

std::optional<std::int64_t> wholeNumber(std::string_view text) {
    std::int64_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && stop == end && !text.empty() ? std::optional(value)
                                                                : std::nullopt;
}

static std::optional<double> plainNumber(std::string_view text) {
    double value = 0.0;
    const NumberKind kind = readNumber(text, false, value);
    return kind == NumberKind::finite || kind == NumberKind::nonfinite ? std::optional(value)
                                                                       : std::nullopt;
}

// An exponent after D, or of three digits, which leave no room for a letter.
std::optional<double> realNumber(std::string_view text) {
    if (const std::optional<double> value = plainNumber(text)) {
        return value;
    }
    std::string usual(text);
    const std::size_t letter = usual.find_first_of("dD");
    const std::size_t sign = usual.find_first_of("+-", 1);
    if (letter != std::string::npos) {
        usual[letter] = 'e';
    } else if (sign != std::string::npos && usual.find_first_of("eE") == std::string::npos) {
        usual.insert(sign, 1, 'e');
    }
    return plainNumber(usual);
}

NameAndUnit splitUnit(const std::string& name) {
    const std::size_t bracket = name.rfind(" (");
    if (!name.ends_with(')') || bracket == std::string::npos) {
        return {name, ""};
    }
    return {name.substr(0, bracket), name.substr(bracket + 2, name.size() - bracket - 3)};
}

std::string_view cutTo(std::string_view text, std::size_t most) {
    if (text.size() > most) {
        while (most > 0 && (static_cast<unsigned char>(text[most]) & 0xc0U) == 0x80U) {
            --most;
        }
        text = text.substr(0, most);
    }
    return text;
}
