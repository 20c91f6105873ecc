#pragma once

#include "workbench/jobs/FoldJob.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

class ModuleLibrary;
struct Method;

// One measured signal, one kernel, and the methods to deconvolve by, each as one block.
struct CompareJob {
    std::shared_ptr<const Signal> signal, kernel;
    std::optional<SignalSource> truth;
    std::vector<const Method*> methods;
    FendraSettings settings;  // those of all methods
    LeftToData leftToData;    // likewise
    bool pad = false;         // methods that need equal lengths get zeros after the shorter signal
    bool allowNonfinite = false;
};

// What one method made of the signal.
struct MethodOutcome {
    const Method* method = nullptr;
    std::string failure;  // why there is no result; else empty
    Signal result;
    RunRecord record;
    double misfit = 0.0;
    double roughness = 0.0;
};

// Runs a method of the job, and measures what comes out:
//     misfit      result convolved with the kernel, less the signal, over the signal. The
//                 convolution is the one that the method inverts: in the time domain for the
//                 iteration, with its lag, in the frequency domain for the others.
//     roughness   differences of neighbouring samples, over the samples
// each as root mean squares, over all channels. Failures stand in the outcome.
MethodOutcome run(const CompareJob& job, const Method& method, const ModuleLibrary& library,
                  JobObserver& observer);

// Writes all results as columns of one file; a method without one has none. Failure as
// createSignal, and if no method has a result.
void writeResults(const std::vector<MethodOutcome>& outcomes, const SignalTarget& target);
