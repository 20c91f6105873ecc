#include "workbench/files/text/AxisColumn.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

static constexpr std::array<std::string_view, 4> timeWords = {"t", "time", "zeit", "temps"};
static constexpr std::array<std::string_view, 10> axisWords = {
    "x", "axis", "index", "sample", "channel", "kanal", "n", "offset", "energy", "frequency"};

namespace {

struct TimeUnit {
    std::string_view word;
    double perSecond;
};

}  // namespace

// The micro sign has two characters in UTF-8, and a byte of its own in older files.
static constexpr std::array timeUnits = {
    TimeUnit{"s", 1.0},         TimeUnit{"ms", 1e3},         TimeUnit{"us", 1e6},
    TimeUnit{"\xc2\xb5s", 1e6}, TimeUnit{"\xce\xbcs", 1e6},  TimeUnit{"\xb5s", 1e6},
    TimeUnit{"ns", 1e9},        TimeUnit{"min", 1.0 / 60.0}, TimeUnit{"h", 1.0 / 3600.0}};

// The words of a name in lower case. Bytes beyond ASCII count as letters.
static std::vector<std::string> wordsOf(std::string_view name) {
    std::vector<std::string> words(1);
    for (const char letter : name) {
        const char lower = letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
        if ((lower >= 'a' && lower <= 'z') || static_cast<unsigned char>(lower) >= 0x80) {
            words.back() += lower;
        } else if (!words.back().empty()) {
            words.emplace_back();
        }
    }
    return words;
}

static bool contains(const std::vector<std::string>& words, std::string_view word) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

std::optional<AxisColumn> findAxisColumn(const std::vector<std::string>& names) {
    if (names.size() < 2) {
        return std::nullopt;
    }
    const std::vector<std::string> words = wordsOf(names.front());
    const auto isOneOfThem = [&words](std::string_view word) { return contains(words, word); };
    if (std::any_of(timeWords.begin(), timeWords.end(), isOneOfThem)) {
        AxisColumn column{true, 1.0};
        for (const auto& [unit, perSecond] : timeUnits) {
            if (contains(words, unit)) {
                column.perSecond = perSecond;
            }
        }
        return column;
    }
    for (const std::string_view word : axisWords) {
        const auto hasWord = [word](const std::string& name) {
            return contains(wordsOf(name), word);
        };
        if (contains(words, word) && std::none_of(names.begin() + 1, names.end(), hasWord)) {
            return AxisColumn{};
        }
    }
    return std::nullopt;
}

bool EvenSteps::accept(double point) {
    if (!std::isfinite(point)) {
        return false;
    }
    if (count == 0) {
        start = point;
    } else {
        const double rise = point - start;
        const double low = rise / (static_cast<double>(count) + 0.05);
        const double high = rise / (static_cast<double>(count) - 0.05);
        const double newLowest = count == 1 ? low : std::max(lowest, low);
        const double newHighest = count == 1 ? high : std::min(highest, high);
        if (!(rise > 0.0) || std::isinf(rise) || newLowest > newHighest) {
            return false;
        }
        lowest = newLowest;
        highest = newHighest;
    }
    last = point;
    ++count;
    return true;
}
