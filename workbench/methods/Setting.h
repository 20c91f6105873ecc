#pragma once

#include "workbench/methods/FendraSettings.h"

#include <nlohmann/json_fwd.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

// One thing that can be set on the module, in the words of the command line. The key is also the
// name of the option of convolve or deconvolve that sets it for one run.
struct Setting {
    using Number = std::variant<std::int32_t, std::uint32_t, double>;
    using Field = std::variant<std::int32_t FendraSettings::*, std::uint32_t FendraSettings::*,
                               double FendraSettings::*>;

    std::string key;
    std::string needs;               // KEY=VALUE without which it plays no part; empty: none
    std::vector<std::string> words;  // that its value is one of; empty: a number
    std::vector<unsigned> controls;  // in the module's dialog: one a word for radios, else one
    Field field;
    std::int32_t firstWord = 0;  // what the field holds for the first word

    // All of them, each behind the one that it needs.
    static const std::vector<Setting>& all();
    static const Setting& named(const std::string& key);  // there must be one

    // Where a word stands; the number of words if it is none of them.
    [[nodiscard]] std::size_t placeOf(const std::string& word) const;

    // The word; where the field holds what only a file can, or the value is a number, that number.
    [[nodiscard]] std::variant<std::string, Number> value(const FendraSettings& settings) const;
    // "spectral", and "method=spectral"
    [[nodiscard]] std::string word(const FendraSettings& settings) const;
    [[nodiscard]] std::string text(const FendraSettings& settings) const;
    [[nodiscard]] bool applies(const FendraSettings& settings) const;
};

// A value for a setting, from KEY=VALUE. The key must be one of a setting.
struct Assignment {
    explicit Assignment(const std::string& keyAndValue);

    // The control of the module's dialog by which the value is given.
    [[nodiscard]] unsigned control() const;

    const Setting* setting;
    std::string value;
};

// All that apply: "direction=convolution per=block domain=frequency".
std::string settingsLine(const FendraSettings& settings);

// All, and of domain and method the one that the direction has.
nlohmann::ordered_json settingsJson(const FendraSettings& settings);

// The first that applies and holds what only a file can, "method=7"; empty: none.
std::string oddSetting(const FendraSettings& settings);
