#pragma once

#include <string>

// What the help of the program and its manual page both say.

constexpr const char* programSummary =
    "Convolves two signals, or removes a known kernel from a measured one.";

std::string programExamples();

constexpr const char* lagText =
    "A result stands where it belongs on its axis: it is moved by the kernel's zero, and by the "
    "one "
    "sample that the time domain lags, unless --origin none is given. Blocks that go by themselves "
    "stay as the module gives them.";

// The formats that are read and written.
std::string filesText();

constexpr const char* exitText =
    "0: done. 1: the run failed, or part of it. 2: wrong command line.";
