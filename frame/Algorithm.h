#pragma once

#include "frame/FoldSettings.h"
#include "frame/Pass.h"

// How the processing step runs a method.
struct Algorithm {
    bool equalLengths;  // whether the two signals must be equally long
    bool resultCounts;  // whether a run that returns 0 or less has failed
    // Makes the algorithm object, runs it on the pass and returns its result.
    int (*run)(const FoldSettings& settings, Pass& pass);
    // Whether the method has no answer for this pass. A run that returns 0 for any other has
    // exhausted memory.
    bool (*refuses)(const FoldSettings& settings, const Pass& pass);
};

// The algorithm that direction and method select; null if there is none.
const Algorithm* selectAlgorithm(const FoldSettings& settings);
