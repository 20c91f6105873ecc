#pragma once

#include "workbench/terminal/CompletionTable.h"

#include <string>
#include <vector>

// A shell whose completion can be given in a script, which offers commands, options with what they
// are about where the shell shows that, the words that a value is one of, and files.
struct Shell {
    const char* word;
    std::string (*script)(const CompletionTable& table);

    static const std::vector<Shell>& all();
    static std::vector<std::string> words();
    // The script for the shell of this word, which has to be one of these.
    static std::string scriptFor(const std::string& word, const CompletionTable& table);
};

std::string bashCompletion(const CompletionTable& table);
std::string zshCompletion(const CompletionTable& table);
std::string fishCompletion(const CompletionTable& table);
std::string powershellCompletion(const CompletionTable& table);
