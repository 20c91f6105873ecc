#pragma once

#include <string>

// The evenly spaced column of a text file: sample i stands at start + i step.
struct SignalAxis {
    std::string name;  // of the column, as its header has it; "axis" without a header
    double start = 0.0;
    double step = 0.0;  // below 0: the axis falls
    bool time = false;  // true: start and step are in seconds, whatever the column's unit

    // What the digits of the column leave of the step's magnitude: times of three decimals at
    // 360 Hz fit other rates near it as well. Equal where the step is exact.
    double lowestStep = 0.0, highestStep = 0.0;
};
