#include "fuzz/fuzz.h"
#include "platform/Windows1252.h"
#include "workbench/files/text/NumberText.h"
#include "workbench/messages/Printable.h"

#include <cmath>
#include <cstdlib>
#include <string>

// An input is a text: as bytes in Windows-1252, as UTF-8, and as a number.

static void checkCharacterSets(std::string_view bytes) {
    const CString text(bytes.data(), static_cast<int>(bytes.size()));
    const CString back = fromUtf8(toUtf8(text));
    require(std::string_view(back, static_cast<std::size_t>(back.GetLength())) == bytes,
            "every text comes back from UTF-8");
    const CString converted = fromUtf8(bytes);
    require(converted.GetLength() <= static_cast<int>(bytes.size()), "a character is one byte");
    require(printable(toUtf8(text)).size() <= 3 * bytes.size(), "a byte is three at the most");
}

static void checkPrintable(std::string_view bytes) {
    const std::string shown = printable(bytes);
    require(printable(shown) == shown, "what can be shown stays");
    for (const char letter : shown) {
        const auto code = static_cast<unsigned char>(letter);
        require(code >= 0x20 && code != 0x7f, "no control character is shown");
    }
    require(printable(bytes, 8).size() <= 8 + 4 + 3, "a long text is cut");
}

// The C library reads the same numbers; it takes more kinds of words and blanks.
static void checkNumber(const std::string& text) {
    double value = 0.0;
    const NumberKind kind = readNumber(text, false, value);
    char* end = nullptr;
    const double expected = std::strtod(text.c_str(), &end);
    const bool whole = end == text.c_str() + text.size() && !text.empty();
    if (kind == NumberKind::finite || kind == NumberKind::nonfinite) {
        require(whole && (value == expected || (std::isnan(value) && std::isnan(expected))) &&
                    std::signbit(value) == std::signbit(expected),
                "a number is what it says");
        require(std::isfinite(value) == (kind == NumberKind::finite), "and of the kind it says");
    }
    if (kind == NumberKind::tooLarge) {
        require(whole, "what is too large is a number");
    }
    if (whole && std::isfinite(expected) &&
        text.find_first_not_of("+-.0123456789eE") == std::string::npos) {
        require(kind == NumberKind::finite, "every decimal number is read");
    }
}

void fuzzOne(Bytes input) {
    const std::string_view bytes = InputReader(input).text(input.size());
    checkCharacterSets(bytes);
    checkPrintable(bytes);
    checkNumber(std::string(bytes));
}
