#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

// What a shell may offer behind an option, or for an argument.
struct CompletedValue {
    enum class Kind { none, words, number, file, folder };
    Kind kind = Kind::none;
    std::vector<std::string> words;  // a value is one of these; "KEY=" goes on
    bool isList = false;             // several of them, separated by commas
};

struct CompletedOption {
    std::vector<std::string> names;  // "-o", "--output"; none: an argument
    std::string about;               // the beginning of its explanation, on one line
    CompletedValue value;
};

struct CompletedCommand {
    std::string name;  // "batch convolve"
    std::string about;
    std::vector<CompletedOption> options;
    std::vector<CompletedValue> arguments;
    std::vector<std::string> commands;  // the last words of those below it

    [[nodiscard]] std::vector<std::string> optionNames() const;
};

// All that can be completed, from the options as the parser has them, and as plain values for the
// script of each shell.
struct CompletionTable {
    explicit CompletionTable(const CLI::App& app);

    CompletedCommand program;                // whose commands are those of the first word
    std::vector<CompletedCommand> commands;  // each before those below it
};
