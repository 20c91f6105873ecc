#pragma once

#include "kernels/InstructionSet.h"
#include "platform/ArithmeticMode.h"

#include <string>
#include <utility>
#include <vector>

// What a trial of the arithmetic has found.
struct SelftestResult {
    ArithmeticMode mode;  // of the thread, as it was met; the trial computes in the standard one
    std::vector<std::pair<std::string, std::string>> digests;  // kernel, digest of its results
    std::string all;                                            // over all results
    std::vector<std::string> differences;  // kernels whose forms differ, and where; empty: none
};

// Runs every kernel on fixed input, as its plain loop and in the form for an instruction set. The
// results of both have to agree in every bit, and are the same on every machine; all NaNs are
// treated as equal. The kernels are those that the module runs: both share one library.
SelftestResult runSelftest(kernels::InstructionSet set);
