#include "workbench/terminal/TextInputOptions.h"

#include "workbench/terminal/OutputOptions.h"
#include "workbench/terminal/values.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <vector>

// A sign that is neither part of a number or a word nor a quote; or one of these words.
static CLI::Validator signValue(const std::vector<std::string>& words, const std::string& what) {
    const auto check = [=](std::string& word) -> std::string {
        const bool sign = word.size() == 1 &&
                          std::string("+-.\"").find(word) == std::string::npos &&
                          std::ispunct(static_cast<unsigned char>(word[0])) != 0;
        return sign || std::find(words.begin(), words.end(), word) != words.end()
                   ? ""
                   : fmt::format("\"{}\" is not a {}; give one sign, such as {}", word, what,
                                 words.empty() ? ";" : "; or |, or tab or space");
    };
    return {check, words.empty() ? "" : "{tab,space}"};
}

void TextInputOptions::addTo(CLI::App& command) {
    command
        .add_option("--separator", separator,
                    "what separates the columns of text files: a sign, tab, or space for blanks; "
                    "default: recognised")
        ->check(signValue({"tab", "space"}, "separator of columns"))
        ->type_name("CHAR")
        ->group("Signals");
    command
        .add_option("--decimal", decimal,
                    "decimal sign of text files; default: the first one in the file")
        ->check(choice({".", ","}))
        ->type_name("")
        ->group("Signals");
    command.add_option("--skip", skip, "lines at the beginning of text files that are not read")
        ->check(indexValue("number of lines"))
        ->type_name("LINES")
        ->group("Signals");
    command
        .add_option("--comment", comment, "sign that begins a comment in text files, as # and % do")
        ->check(signValue({}, "sign of comments"))
        ->type_name("CHAR")
        ->group("Signals");
    command
        .add_option("--missing", missing,
                    "word of text files that stands for a missing number, as an empty cell, NA, "
                    "N/A and null do")
        ->type_name("WORD")
        ->group("Signals");
    command
        .add_option("--gaps", gaps,
                    "what becomes of missing numbers in text files: linear makes them from their "
                    "neighbours, up to 10 in a row; default: they are refused")
        ->check(choice({"linear"}))
        ->type_name("")
        ->group("Signals");
}

TextOptions TextInputOptions::reading() const {
    TextOptions options;
    if (!separator.empty()) {
        options.separator = separator == "tab" ? '\t' : separator == "space" ? ' ' : separator[0];
    }
    if (!decimal.empty()) {
        options.decimal = decimal[0];
    }
    options.skip = skip;
    options.comment = comment.empty() ? options.comment : comment[0];
    options.missing = missing;
    options.fillGaps = !gaps.empty();
    return options;
}

std::string TextInputOptions::words() const {
    const auto option = [](const char* name, const std::string& word) {
        return word.empty() ? "" : fmt::format(" {} {}", name, quoted(word));
    };
    return option("--separator", separator) + option("--decimal", decimal) +
           (skip > 0 ? fmt::format(" --skip {}", skip) : "") + option("--comment", comment) +
           option("--missing", missing) + option("--gaps", gaps);
}
