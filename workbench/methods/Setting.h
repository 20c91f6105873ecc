#pragma once

#include "workbench/methods/FendraSettings.h"

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

// One thing that can be set on the module. The table of them is where the options of the command
// line, the keys of --set and the fields of JSON all come from, so that a word means the same
// everywhere.
struct Setting {
    using Number = std::variant<std::int32_t, std::uint32_t, double>;
    using Field = std::variant<std::int32_t FendraSettings::*, std::uint32_t FendraSettings::*,
                               double FendraSettings::*>;
    // A word that the value may be, what the field holds for it, and the radio button in the
    // module's dialog that stands for it; 0: none of its own.
    struct Word {
        std::string word;
        std::int32_t held;
        unsigned control;
        bool ofModule = true;  // false: the workbench alone has it, no module can be set to it
    };
    enum class Range { any, aboveZero };

    std::string key;
    std::string needs;        // KEY=VALUE without which it plays no part; empty: none
    std::string about;        // for the help
    std::vector<Word> words;  // empty: the value is a number
    unsigned control;         // check box, list or field of the dialog; 0: a radio for each word
    Field field;              // holds the value: the number, or what the word stands for
    Range range = Range::any;
    // Of a number that can be switched off: what holds the switch, and its check box. The only word
    // is then "off".
    std::int32_t FendraSettings::*enabledBy = nullptr;
    unsigned enablingControl = 0;
    // Where it is kept that the value is to be chosen from the signals; null: it cannot be. On the
    // command line that is the word "auto"; modules, graphs and --set know nothing of it.
    bool LeftToData::*leftToData = nullptr;

    // All of them, each after the one that it needs.
    static const std::vector<Setting>& all();
    // The one of that key; there must be one.
    static const Setting& named(const std::string& key);
    // Those that apply under these settings.
    static std::vector<const Setting*> applyingTo(const FendraSettings& settings);

    [[nodiscard]] bool takesNumber() const { return words.empty() || enabledBy != nullptr; }
    // The row of a word; null if it is none of them.
    [[nodiscard]] const Word* find(const std::string& word) const;
    [[nodiscard]] std::vector<std::string> wordList() const;
    // Those that a module can be set to.
    [[nodiscard]] std::vector<std::string> moduleWords() const;

    // The word; or, where the field holds what only a file can or the value is a number, a number.
    [[nodiscard]] std::variant<std::string, Number> value(const FendraSettings& settings) const;
    // "spectral", and "method=spectral"
    [[nodiscard]] std::string word(const FendraSettings& settings) const;
    [[nodiscard]] std::string text(const FendraSettings& settings) const;
    [[nodiscard]] bool applies(const FendraSettings& settings) const;

    // What is wrong with a value, and what to give; empty: nothing.
    [[nodiscard]] std::string problemWith(const std::string& given) const;
    // Takes a value that nothing is wrong with.
    void assign(FendraSettings& settings, const std::string& given) const;
};

// A value for a setting, from KEY=VALUE. The key must be one of a setting.
struct Assignment {
    explicit Assignment(const std::string& keyAndValue);

    const Setting* setting;
    std::string value;
};

// All that apply: "direction=convolution per=block domain=frequency".
std::string settingsLine(const FendraSettings& settings);

// The first that applies and that a run refuses, with the reason: "method=7, which is not on
// offer". The dialog or only a file may hold it. Empty: none.
std::string refusedSetting(const FendraSettings& settings);
