#pragma once

#include "workbench/analysis/IterationCurve.h"

#include <cstdint>

// A number of steps of the iteration, and what it makes of the signal.
struct StepChoice {
    static constexpr std::int64_t mostSteps = 20000;  // that are searched

    std::int64_t steps = 0;
    std::int64_t lastStep = 0;    // of the range that was searched, from 1 on; 0: no search
    double explained = 0.0;       // 1 - E/E_0: share of the signal's energy, at most 1
    double kept = 0.0;            // degrees of freedom
    double noise = 0.0;           // standard deviation of a sample, in its units
    bool noiseIsBound = false;    // taken from the residual: noise and what is not explained
    double predictedError = 0.0;  // E

    [[nodiscard]] bool atEdge() const { return lastStep > 0 && (steps == 1 || steps == lastStep); }
};

// The number of steps, from 1 to mostSteps, at which robust generalised cross-validation is
// smallest, among those up to which the error falls; 0 if there is none. A geometric grid of 200
// counts finds the valley, finer ones its floor.
StepChoice chooseSteps(const IterationCurve& curve);

// A given number of steps.
StepChoice judgeSteps(const IterationCurve& curve, std::int64_t steps);
