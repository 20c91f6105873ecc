#pragma once

#include "workbench/jobs/CompareJob.h"

#include <string>
#include <vector>

// A sentence on results, and the methods of which it holds; of none where it is on a file.
struct MethodSentence {
    std::string text;
    std::vector<std::string> methods;
};

// What was chosen, and what speaks against the results. What holds for several methods is said
// once.
std::vector<MethodSentence> sentencesOn(const std::vector<MethodOutcome>& outcomes);
