#include "workbench/files/text/ColumnName.h"

#include "workbench/files/text/CellCutter.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

static constexpr std::array<std::string_view, 4> timeWords = {"t", "time", "zeit", "temps"};
static constexpr std::array<std::string_view, 10> axisWords = {
    "x", "axis", "index", "sample", "channel", "kanal", "n", "offset", "energy", "frequency"};

static constexpr std::array<std::string_view, 2> plainAxisWords = {"x", "axis"};

// Words that stand last in the name of a time and are units, though not of seconds.
static constexpr std::array<std::string_view, 15> otherUnits = {
    "year",   "years",   "yr",    "a",      "month", "months", "week", "weeks",
    "sample", "samples", "frame", "frames", "tick",  "ticks",  "k"};

namespace {

struct TimeUnitRow {
    TimeUnit unit;
    std::vector<std::string_view> words;
};

}  // namespace

// The micro sign has two characters in UTF-8, and a byte of its own in older files.
static const std::vector<TimeUnitRow>& timeUnits() {
    static const std::vector<TimeUnitRow> rows = {
        {{1.0, 1e9}, {"ns", "nsec", "nanosecond", "nanoseconds"}},
        {{1.0, 1e6},
         {"us", "\xc2\xb5s", "\xce\xbcs", "\xb5s", "usec", "\xc2\xb5sec", "\xce\xbcsec", "\xb5sec",
          "microsecond", "microseconds"}},
        {{1.0, 1e3}, {"ms", "msec", "msecs", "millisecond", "milliseconds"}},
        {{1.0, 1.0}, {"s", "sec", "secs", "second", "seconds", "sekunden", "secondes"}},
        {{60.0, 1.0}, {"min", "mins", "minute", "minutes", "minuten"}},
        {{3600.0, 1.0}, {"h", "hr", "hrs", "hour", "hours", "stunden", "heures"}},
        {{86400.0, 1.0}, {"d", "day", "days", "tage", "jours"}}};
    return rows;
}

static std::optional<TimeUnit> unitNamed(std::string_view word) {
    for (const TimeUnitRow& row : timeUnits()) {
        if (std::find(row.words.begin(), row.words.end(), word) != row.words.end()) {
            return row.unit;
        }
    }
    return std::nullopt;
}

static std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
    });
    return lower;
}

// Bytes beyond ASCII count as letters.
static std::vector<std::string> wordsOf(std::string_view lower) {
    std::vector<std::string> words(1);
    for (const char letter : lower) {
        if ((letter >= 'a' && letter <= 'z') || static_cast<unsigned char>(letter) >= 0x80) {
            words.back() += letter;
        } else if (!words.back().empty()) {
            words.emplace_back();
        }
    }
    if (words.back().empty()) {
        words.pop_back();
    }
    return words;
}

// What stands in the first brackets, or after the last slash.
static std::optional<std::string_view> markedUnit(std::string_view lower) {
    const std::size_t open = lower.find_first_of("([");
    if (open != std::string_view::npos) {
        const std::size_t length = lower.find_first_of(")]", open);
        return trimmed(lower.substr(open + 1, length == std::string_view::npos
                                                  ? std::string_view::npos
                                                  : length - open - 1));
    }
    const std::size_t slash = lower.rfind('/');
    return slash == std::string_view::npos ? std::nullopt
                                           : std::optional(trimmed(lower.substr(slash + 1)));
}

template <std::size_t N>
static bool isOneOf(const std::array<std::string_view, N>& list, std::string_view word) {
    return std::find(list.begin(), list.end(), word) != list.end();
}

// Of a name whose unit is not marked: its last word, if that is one.
static std::pair<bool, std::optional<TimeUnit>> lastUnit(const std::vector<std::string>& words) {
    const std::string& last = words.back();
    if (words.size() == 1 && isOneOf(timeWords, last)) {
        return {false, TimeUnit{}};
    }
    if (last == "min" || last == "d" || isOneOf(otherUnits, last)) {
        return {true, std::nullopt};
    }
    const std::optional<TimeUnit> unit = unitNamed(last);
    return {unit.has_value(), unit ? unit : TimeUnit{}};
}

ColumnName ColumnName::ofMoments() {
    ColumnName name;
    name.kind = Kind::time;
    name.unit = TimeUnit{};
    return name;
}

ColumnName::ColumnName(std::string_view name) {
    const std::string lower = lowerCase(name);
    const std::vector<std::string> words = wordsOf(lower);
    const auto has = [&words](const auto& list) {
        return std::any_of(words.begin(), words.end(),
                           [&list](const std::string& word) { return isOneOf(list, word); });
    };
    const bool spelled = words.size() == 1 && words[0].size() > 3 && unitNamed(words[0]);
    if (!words.empty() && (has(timeWords) || spelled)) {
        const std::optional<std::string_view> marked = markedUnit(lower);
        const auto [given, known] = marked ? std::pair(true, unitNamed(*marked)) : lastUnit(words);
        const bool onlyT = std::none_of(words.begin(), words.end(), [](const std::string& word) {
            return word != "t" && isOneOf(timeWords, word);
        });
        // A lone t says little: with another unit it is something else.
        kind = given && !known && onlyT && !spelled && marked ? Kind::other : Kind::time;
        unit = known;
    } else if (has(axisWords)) {
        const std::optional<std::string_view> marked = markedUnit(lower);
        unit = marked && isOneOf(plainAxisWords, words[0]) ? unitNamed(*marked) : std::nullopt;
        kind = unit ? Kind::time : Kind::axis;
    }
}
