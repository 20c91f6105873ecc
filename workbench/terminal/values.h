#pragma once

#include "workbench/jobs/Gain.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <string>
#include <vector>

// What the value of an option may be. Each message says what is wrong with the word and what to
// give.

// The word for a value that is chosen from the data.
inline constexpr const char* fromData = "auto";

// One of these words.
CLI::Validator choice(const std::vector<std::string>& words);

// What a problem is not found with: a function gives the complaint on a word, empty for none. Words
// beside numbers are there for help, completion and suggestions.
CLI::Validator settingValue(const std::vector<std::string>& words, bool orNumber,
                            const std::function<std::string(const std::string&)>& problem);

// A whole number from 1 to largest; what is its name in the message.
CLI::Validator countUpTo(long long largest, const std::string& what);

// A whole number, 0 or more.
CLI::Validator indexValue(const std::string& what);

// The number that a checked word is.
double numberOf(const std::string& word);

// A number above 0.
CLI::Validator positiveNumber(const std::string& what);

// 0, or a number above it.
CLI::Validator zeroOrPositive(const std::string& what);

// A number of dB up to Gain::most either way, or normalize; and what such a word stands for, an
// empty one for none.
CLI::Validator gainValue();
Gain gainOf(const std::string& word);

// Two finite numbers FROM:TO, FROM below TO, and what such a word stands for.
struct NumberRange {
    double from = 0.0, to = 0.0;
};
CLI::Validator rangeValue(const std::string& what);
NumberRange rangeOf(const std::string& word);
