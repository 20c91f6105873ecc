#include "workbench/terminal/values.h"

#include "workbench/terminal/suggestion.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

template <typename Number>
static bool parse(const std::string& word, Number& number) {
    const char* end = word.data() + word.size();
    const auto [rest, error] = std::from_chars(word.data(), end, number);
    return error == std::errc() && rest == end;
}

CLI::Validator choice(const std::vector<std::string>& words) {
    const auto check = [words](std::string& word) -> std::string {
        if (std::find(words.begin(), words.end(), word) != words.end()) {
            return "";
        }
        return fmt::format("\"{}\" must be one of {}{}", word, fmt::join(words, ", "),
                           suggestion(word, words));
    };
    return {check, fmt::format("{{{}}}", fmt::join(words, ","))};
}

CLI::Validator countUpTo(long long largest, const std::string& what) {
    const auto check = [largest, what](std::string& word) -> std::string {
        long long count = 0;
        if (parse(word, count) && count >= 1 && count <= largest) {
            return "";
        }
        return fmt::format("\"{}\" is not a {}; give a whole number from 1 to {}", word, what,
                           largest);
    };
    return {check, ""};
}

static CLI::Validator number(const std::string& what, bool zeroToo) {
    const auto check = [=](std::string& word) -> std::string {
        double value = 0.0;
        if (parse(word, value) && std::isfinite(value) &&
            (value > 0.0 || (zeroToo && value == 0))) {
            return "";
        }
        return fmt::format("\"{}\" is not a {}; give {}a number above 0", word, what,
                           zeroToo ? "0 or " : "");
    };
    return {check, ""};
}

CLI::Validator indexValue(const std::string& what) {
    const auto check = [what](std::string& word) -> std::string {
        long long index = 0;
        if (parse(word, index) && index >= 0) {
            return "";
        }
        return fmt::format("\"{}\" is not a {}; give a whole number from 0 on", word, what);
    };
    return {check, ""};
}

double numberOf(const std::string& word) {
    double number = 0.0;
    parse(word, number);
    return number;
}

CLI::Validator positiveNumber(const std::string& what) {
    return number(what, false);
}

CLI::Validator zeroOrPositive(const std::string& what) {
    return number(what, true);
}

// Both numbers 0 where the word is not two of them.
NumberRange rangeOf(const std::string& word) {
    const std::size_t colon = word.find(':');
    NumberRange range;
    const bool numbers = colon != std::string::npos && parse(word.substr(0, colon), range.from) &&
                         parse(word.substr(colon + 1), range.to) && std::isfinite(range.from) &&
                         std::isfinite(range.to);
    return numbers ? range : NumberRange();
}

CLI::Validator rangeValue(const std::string& what) {
    const auto check = [=](std::string& word) -> std::string {
        const NumberRange range = rangeOf(word);
        if (range.from < range.to) {
            return "";
        }
        return fmt::format("\"{}\" is not a {}; give FROM:TO, two numbers, the lower one first",
                           word, what);
    };
    return {check, ""};
}

// A word that is not a number has no value.
static std::optional<double> decibels(const std::string& word) {
    double value = 0.0;
    const bool fits = parse(word, value) && std::abs(value) <= Gain::most;  // not a NaN
    return fits ? std::optional(value) : std::nullopt;
}

CLI::Validator gainValue() {
    const auto check = [](std::string& word) -> std::string {
        return word == "normalize" || decibels(word)
                   ? ""
                   : fmt::format("\"{}\" is not a gain; give dB from -{} to {}, or normalize{}",
                                 word, Gain::most, Gain::most, suggestion(word, {"normalize"}));
    };
    return {check, "{normalize,NUMBER}"};
}

Gain gainOf(const std::string& word) {
    if (word.empty()) {
        return {};
    }
    const std::optional<double> value = decibels(word);
    return value ? Gain{Gain::Kind::decibels, *value} : Gain{Gain::Kind::normalize};
}

CLI::Validator settingValue(const std::vector<std::string>& words, bool orNumber,
                            const std::function<std::string(const std::string&)>& problem) {
    const auto check = [=](std::string& word) -> std::string {
        const std::string complaint = problem(word);
        return complaint.empty() ? "" : complaint + suggestion(word, words);
    };
    const std::string number = orNumber ? (words.empty() ? "" : ",NUMBER") : "";
    return {check, words.empty() ? "" : fmt::format("{{{}{}}}", fmt::join(words, ","), number)};
}
