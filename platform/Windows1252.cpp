#include "platform/Windows1252.h"

#include <algorithm>
#include <array>

// Characters of the bytes 0x80 to 0x9F (Unicode Consortium, mapping table CP1252); the five bytes
// that the table leaves open have their own number.
static constexpr std::array<char16_t, 32> upperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

static constexpr char32_t malformed = 0xFFFD;

static char32_t toUnicode(unsigned char byte) {
    return byte >= 0x80 && byte < 0xA0 ? upperControls[byte - 0x80U] : byte;
}

static char toWindows1252(char32_t character) {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) {
        return static_cast<char>(character);
    }
    const auto* const found =
        std::find(upperControls.data(), upperControls.data() + upperControls.size(), character);
    const auto index = found - upperControls.data();
    return index < 32 ? static_cast<char>(0x80 + index) : '?';
}

// All characters of Windows-1252 lie below 0x10000.
static void appendUtf8(std::string& text, char32_t character) {
    if (character < 0x80) {
        text += static_cast<char>(character);
        return;
    }
    if (character < 0x800) {
        text += static_cast<char>(0xC0 | (character >> 6));
    } else {
        text += static_cast<char>(0xE0 | (character >> 12));
        text += static_cast<char>(0x80 | (character >> 6 & 0x3F));
    }
    text += static_cast<char>(0x80 | (character & 0x3F));
}

// Takes one character, or one malformed sequence, from the front of text, which is not empty. A
// byte that does not continue a sequence is left for the next one.
static char32_t takeCharacter(std::string_view& text) {
    const auto lead = static_cast<unsigned char>(text.front());
    text.remove_prefix(1);
    if (lead < 0x80) {
        return lead;
    }
    if (lead < 0xC0 || lead > 0xF7) {
        return malformed;
    }
    const int following = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    char32_t character = lead & (0x3FU >> following);
    for (int i = 0; i < following; ++i) {
        if (text.empty() || (static_cast<unsigned char>(text.front()) & 0xC0U) != 0x80) {
            return malformed;
        }
        character = character << 6 | (static_cast<unsigned char>(text.front()) & 0x3FU);
        text.remove_prefix(1);
    }
    // A longer form than the character needs is malformed: two ways to write one text.
    static constexpr std::array<char32_t, 4> shortest = {0, 0x80, 0x800, 0x10000};
    return character < shortest[static_cast<std::size_t>(following)] ? malformed : character;
}

std::string toUtf8(const CString& text) {
    std::string result;
    const char* const bytes = text;
    for (int i = 0; i < text.GetLength(); ++i) {
        appendUtf8(result, toUnicode(static_cast<unsigned char>(bytes[i])));
    }
    return result;
}

CString fromUtf8(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        result += toWindows1252(takeCharacter(text));
    }
    return {result.data(), static_cast<int>(result.size())};
}
