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
    Treatment treatment;      // likewise, as far as a method has it
    bool pad = false;         // room, so that nothing wraps round
    double rate = 0.0;        // of signals that have none, in Hz; 0: not known
    bool allowNonfinite = false;
    int threads = 1;  // for methods and their channels, at most; they change no bit
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

// Runs the methods of the job, and measures what comes out of each:
//     misfit      result convolved with the kernel about its zero, less the signal, over the
//                 signal. Where the result stays as the module gives it, with the lag that the
//                 method takes off.
//     roughness   differences of neighbouring samples, over the samples
// each as root mean squares, over all channels. The outcomes stand in the order of the methods,
// failures in them. The observer sees one job, and stops all methods: by Stopped.
std::vector<MethodOutcome> run(const CompareJob& job, const ModuleLibrary& library,
                               JobObserver& observer);

// Writes all results as columns of one file; a method without one has none. Failure as
// createSignal, and if no method has a result.
void writeResults(const std::vector<MethodOutcome>& outcomes, const SignalTarget& target);
