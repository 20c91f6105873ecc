#pragma once

#include "workbench/files/signalFiles.h"
#include "workbench/jobs/Gain.h"
#include "workbench/jobs/JobObserver.h"
#include "workbench/jobs/RunRecord.h"
#include "workbench/methods/FendraSettings.h"
#include "workbench/signals/Signal.h"
#include "workbench/signals/SignalSource.h"
#include "workbench/treatment/Treatment.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

class ModuleLibrary;

// How the signals of a job are cut.
struct Cutting {
    // Samples in a block; 0: the whole signal is one block, or, of a linear convolution, as many as
    // cost least: its result is the same, in the frequency domain to rounding.
    std::int64_t block = 0;
    bool pad = false;       // zeros are appended, so that nothing wraps round
    bool circular = false;  // a convolution may be cut into blocks that wrap round by themselves
};

// A run as a value: two signals, the settings of the module, how they are cut, and what is to be
// known of the result. Jobs are independent of each other: several may run at once, each in a
// thread of its own.
struct FoldJob {
    SignalSource first, second;  // with deconvolution the measured signal, and the kernel
    FendraSettings settings;
    LeftToData leftToData;  // of the settings: chosen before the module runs
    Treatment treatment;    // around the module, where the signals are one block each
    Cutting cutting;
    double rate = 0.0;                  // of signals that have none, in Hz; 0: not known
    std::optional<SignalSource> truth;  // to compare the result with
    bool allowNonfinite = false;        // NaN and infinity in the result are not a failure
    // The record has a digest of the result, and remarks on it; these take longer than the run of a
    // short signal does.
    bool judged = true;
    bool keepPartial = false;  // somebody may stop it, to have the estimate of one iteration
    int threads = 1;           // for channels and blocks, at most; they change no bit
    Gain gain;                 // of the result, after it was compared
    std::optional<SignalTarget> curve;  // where the points of a search are written
    std::string words;                  // the command line that gives the same result again
    // That with what was found in place of what was left to the data; may be empty.
    std::function<std::string(const FendraSettings& found, const Treatment& treatment)> wordsWith;
    std::string graph;  // where the settings were stored; empty: they were given
};

// Result and record of a job that was run in memory.
struct Outcome {
    Signal result;
    RunRecord record;
};

// Both forms run the job with the module of a library, in the job's threads as far as memory
// suffices. A deconvolution of whole signals has them in memory, and is prepared and judged as
// Deconvolution says.
//   Failure   settings that a run refuses, or that the data do not give, signals that do not go
//             together or cannot be read, more memory than there is, a module that fails, a result
//             with NaN or infinity or of zeros alone, a target that cannot be written. Stopped,
//             by the observer before there was a result. Nothing is written then.
Outcome run(const FoldJob& job, const ModuleLibrary& library, JobObserver& observer);
// copy: also takes the result, in memory; null: nothing does.
RunRecord run(const FoldJob& job, const ModuleLibrary& library, const SignalTarget& target,
              JobObserver& observer, Signal* copy = nullptr);
