#pragma once

#include "workbench/desktop/FoldBench.h"

#include <QString>

#include <map>
#include <string>
#include <vector>

// An option of convolve or deconvolve that has a control in the window; those that have none can be
// typed there as words.
struct WorkOption {
    enum class Kind {
        choice,  // one of some words
        number,  // a number, or one of some words
        range,   // FROM:TO
        flag     // given or not
    };

    std::string key;      // without dashes
    std::string command;  // "convolve", "deconvolve"; empty: both
    std::string method;   // that it belongs to; empty: any, or none
    Kind kind = Kind::choice;
    std::vector<std::string> words;  // that it takes, without auto
    std::string byDefault;           // what holds where it is not given
    bool takesAuto = false;          // whether the word auto leaves it to the data

    // For people, in their language.
    [[nodiscard]] QString label() const;
    [[nodiscard]] QString about() const;
    static QString wordFor(const std::string& word);

    static const std::vector<WorkOption>& all();
};

// What is chosen in the window.
struct WorkState {
    std::string command = "deconvolve", signal, kernel;
    // By the option's key. "auto" as the method leaves that, and all that is not given, to the
    // data.
    std::map<std::string, std::string> values = {{"method", "auto"}};
    std::string other;  // further words, as typed into a shell

    // The value that holds, given or not; of a flag "on" or "".
    [[nodiscard]] std::string value(const WorkOption& option) const;
    [[nodiscard]] bool applies(const WorkOption& option) const;

    // The words of the command line: what plays no part, or stands at its default, is left out.
    [[nodiscard]] FoldBench::Words words() const;
    // The same for the comparison of all methods, which has no method of its own.
    [[nodiscard]] FoldBench::Words comparisonWords() const;

    // The settings of the module, as far as they are given.
    [[nodiscard]] FendraSettings settings() const;
    // Takes the settings of the module, those of the method among them.
    void take(const FendraSettings& settings);
};
