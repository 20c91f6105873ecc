#pragma once

#include "signal/KeptPlan.h"

#include <memory>

// A signal of the processing step, with its length.
struct SampleArray {
    std::unique_ptr<double[]> samples;
    int length = 0;
};

// One run of an algorithm: its operands and its results. The order of declaration is that in which
// they end, read backwards: first, second, result.
struct Pass {
    // Makes the result array, as long as the longer signal, all NaN. Memory that runs out leaves by
    // std::bad_alloc.
    Pass(SampleArray firstSignal, SampleArray secondSignal);

    SampleArray result;
    SampleArray second;
    SampleArray first;
    double extraValues[2] = {0.0, 0.0};  // of methods that give scalars
    KeptPlan* plan = nullptr;            // where passes keep theirs for the next one
    bool stopped = false;                // by the observer, within the run
};
