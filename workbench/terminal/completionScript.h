#pragma once

#include <CLI/CLI.hpp>

#include <string>

// A completion script for bash: commands, options, the words that a value is one of, and files
// everywhere else.
std::string completionScript(const CLI::App& program);
