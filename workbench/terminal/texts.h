#pragma once

#include <string>

// What the help of the program and its manual page both say.

constexpr const char* programSummary =
    "Convolves two signals, or removes a known kernel from a measured one.";

constexpr const char* programExamples =
    "  fendra convolve speech.wav room.wav -o wet.wav      add the echo of a room\n"
    "  fendra deconvolve wet.wav room.wav -o dry.wav       and remove it again\n"
    "  fendra deconvolve measured.csv kernel.csv --auto    as sharp as the noise allows\n"
    "  fendra convolve a.csv b.csv --pad                   the linear result, as text\n"
    "  fendra compare measured.csv kernel.csv              every method, side by side\n"
    "  fendra settings lines.graph                         choose settings, and keep them\n"
    "  fendra info speech.wav                              what a file holds\n";

constexpr const char* lagText =
    "A result stands where it belongs on its axis: it is moved by the kernel's zero, and by the "
    "one "
    "sample that the time domain lags, unless --origin none is given. Blocks that go by themselves "
    "stay as the module gives them.";

// The formats that are read and written.
std::string filesText();

constexpr const char* exitText =
    "0: done. 1: the run failed, or part of it. 2: wrong command line.";
