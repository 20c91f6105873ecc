#pragma once

#include "workbench/signals/SignalReader.h"

// The step that two signals have in common, and so has what comes of them.
struct CommonStep {
    double rate = 0.0;  // Hz; 0: not known
};

// Rates that differ by no more than rounded time columns do are one. given: in Hz, for signals that
// have none; 0: none. Failure if rates differ.
CommonStep commonStep(const SignalInfo& a, const SignalInfo& b, double given);
