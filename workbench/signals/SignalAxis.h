#pragma once

#include <string>

// The evenly spaced first column of a text file: sample i stands at start + i step.
struct SignalAxis {
    std::string name;  // of the column, as its header has it
    double start = 0.0;
    double step = 0.0;  // above 0
    bool time = false;  // true: start and step are in seconds, whatever the column's unit
};
