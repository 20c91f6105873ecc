#include "workbench/files/text/UnitText.h"

#include "workbench/files/text/CellCutter.h"

#include <algorithm>
#include <array>

static constexpr auto signs = std::to_array<std::string_view>(
    {"s", "min", "h",   "d",  "m",  "g",   "A",   "K",   "mol", "cd",  "Hz", "N",       "Pa",
     "J", "W",   "C",   "V",  "F",  "Ohm", "ohm", "S",   "Wb",  "T",   "H",  "lm",      "lx",
     "L", "l",   "bar", "eV", "dB", "dBm", "deg", "rad", "ppm", "cps", "Da", "\xce\xa9"});
static constexpr auto words = std::to_array<std::string_view>({"%",
                                                               "second",
                                                               "seconds",
                                                               "sec",
                                                               "minutes",
                                                               "hours",
                                                               "volt",
                                                               "volts",
                                                               "ampere",
                                                               "amperes",
                                                               "amp",
                                                               "amps",
                                                               "watt",
                                                               "watts",
                                                               "hertz",
                                                               "kelvin",
                                                               "celsius",
                                                               "pascal",
                                                               "tesla",
                                                               "degrees",
                                                               "counts",
                                                               "a.u.",
                                                               "arb.u.",
                                                               "au",
                                                               "units",
                                                               "\xc2\xb0",
                                                               "\xc2\xb0"
                                                               "c"});
static constexpr auto prefixes = std::to_array<std::string_view>(
    {"f", "p", "n", "u", "m", "c", "d", "h", "k", "M", "G", "T", "\xc2\xb5", "\xce\xbc"});

template <std::size_t N>
static bool isOneOf(const std::array<std::string_view, N>& list, std::string_view word) {
    return std::find(list.begin(), list.end(), word) != list.end();
}

static std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
    });
    return lower;
}

static bool isPlainUnit(std::string_view word) {
    return isOneOf(signs, word) || isOneOf(words, lowerCase(word)) ||
           std::any_of(prefixes.begin(), prefixes.end(), [word](std::string_view prefix) {
               return word.starts_with(prefix) && isOneOf(signs, word.substr(prefix.size()));
           });
}

static bool isBracketed(std::string_view cell) {
    return cell.size() >= 2 && ((cell.front() == '(' && cell.back() == ')') ||
                                (cell.front() == '[' && cell.back() == ']'));
}

// A product or a quotient: its parts, without exponents.
static bool isCompound(std::string_view cell) {
    bool any = false;
    while (!cell.empty()) {
        const std::size_t end = std::min(cell.find_first_of("/*^. -+0123456789"), cell.size());
        if (end > 0 && !isPlainUnit(cell.substr(0, end))) {
            return false;
        }
        any = any || end > 0;
        cell.remove_prefix(std::min(end + 1, cell.size()));
    }
    return any;
}

bool isUnit(std::string_view cell) {
    cell = withoutQuotes(cell);
    return cell.empty() || cell == "-" || isBracketed(cell) || isPlainUnit(cell) ||
           isCompound(cell);
}

std::string withUnit(const std::string& name, std::string_view unit) {
    unit = isBracketed(unit) ? trimmed(unit.substr(1, unit.size() - 2)) : unit;
    if (unit.empty() || unit == "-") {
        return name;
    }
    return name + " (" + std::string(unit) + ")";
}
