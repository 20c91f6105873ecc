#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

// One line on what is wrong with a command line, with a remedy. words: the command line without the
// program's name.

// On its first word alone, before it is parsed; empty: nothing is wrong with that.
std::string complaintOnFirst(const CLI::App& program, const std::vector<std::string>& words);

// On what the parser has found.
std::string complaint(const CLI::App& program, const CLI::ParseError& error,
                      const std::vector<std::string>& words);
