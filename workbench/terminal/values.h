#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

// What the value of an option may be. Each message says what is wrong with the word and what to
// give.

// One of these words.
CLI::Validator choice(const std::vector<std::string>& words);

// A whole number from 1 to largest; what is its name in the message.
CLI::Validator countUpTo(long long largest, const std::string& what);

// A finite number, and one above 0.
CLI::Validator finiteNumber(const std::string& what);
CLI::Validator positiveNumber(const std::string& what);
