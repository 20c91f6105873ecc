#pragma once

#include "platform/ArithmeticMode.h"

#include <string>
#include <utility>
#include <vector>

// What a trial of the arithmetic has found.
struct SelftestResult {
    std::string instructions;  // the set that the fast forms ran on, but for those in `forms`
    std::vector<std::pair<std::string, std::string>> forms;  // kernel that chooses a set, that set
    ArithmeticMode mode;  // of the thread, as it was met; the trial computes in the standard one
    std::vector<std::pair<std::string, std::string>> digests;  // kernel, digest of its results
    std::string all;                                           // over all results
    std::vector<std::string> differences;  // kernels whose forms differ, and where; empty: none
};

// Runs every kernel on fixed input, as its plain loop and in the form for an instruction set:
// "baseline", "avx2", "avx512", or empty for what the module computes with: the widest there is,
// and for some kernels the one that has been found to be the fastest. The results of both have to
// agree in every bit, and are the same on every machine; all NaNs are treated as equal. The kernels
// are those that the module runs: both share one library. Failure if the processor does not have
// the set.
SelftestResult runSelftest(const std::string& instructions);
