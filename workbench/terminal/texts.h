#pragma once

// What the help of the program and its manual page both say.

constexpr const char* programSummary =
    "Convolves two signals, or takes a known kernel out of a measured signal.";

constexpr const char* programExamples =
    "  fendra convolve speech.wav room.wav -o wet.wav      put a dry recording into a room\n"
    "  fendra deconvolve wet.wav room.wav -o dry.wav       and take it out again\n"
    "  fendra convolve a.csv b.csv --pad                   the linear result, as text\n"
    "  fendra settings lines.graph                         choose settings, and keep them\n"
    "  fendra info speech.wav                              what a file holds\n";

constexpr const char* lagText =
    "Time-domain results come one sample late against frequency-domain ones: sample n holds what "
    "the "
    "frequency domain gives at n-1, and the last sample wraps round to the front.";

constexpr const char* filesText =
    "Audio: WAV, W64, RF64, AIFF, FLAC. Text: columns separated by commas, semicolons, tabs or "
    "blanks, "
    "with # comments, a header line and a time column if you like. - is standard input or output. "
    "The "
    "ending of the output's name chooses its format: .wav .w64 .rf64 .aiff .flac or .csv .tsv .txt "
    ".dat. An audio result holds 64-bit floats unless --encoding says otherwise.";

constexpr const char* exitText = "0: done. 1: the run failed. 2: the command line is wrong.";
