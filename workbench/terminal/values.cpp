#include "workbench/terminal/values.h"

#include "workbench/terminal/suggestion.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <charconv>
#include <cmath>

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
        return fmt::format("\"{}\" is none of {}{}", word, fmt::join(words, ", "),
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
        return fmt::format("\"{}\" is no {}; give a whole number from 1 to {}", word, what,
                           largest);
    };
    return {check, ""};
}

static CLI::Validator number(const std::string& what, const std::string& kind, bool positive) {
    const auto check = [=](std::string& word) -> std::string {
        double value = 0.0;
        if (parse(word, value) && std::isfinite(value) && (value > 0.0 || !positive)) {
            return "";
        }
        return fmt::format("\"{}\" is no {}; give a {}", word, what, kind);
    };
    return {check, ""};
}

CLI::Validator finiteNumber(const std::string& what) {
    return number(what, "finite number", false);
}

CLI::Validator positiveNumber(const std::string& what) {
    return number(what, "number above 0", true);
}
