#pragma once

#include "workbench/calls/CallOptions.h"
#include "workbench/calls/CallSignal.h"
#include "workbench/jobs/FoldJob.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class ModuleLibrary;

// What a call gives.
struct CallResult {
    std::vector<double> value;         // of each sample, all channels
    std::vector<double> lower, upper;  // bounds of each; empty where none were asked for
    int channels = 1;
    std::int64_t samples = 0;  // of each channel
    double rate = 0.0;         // Hz; 0: not known
    std::optional<SignalAxis> axis;

    // The record of the run, as --json prints it. Made when it is asked for: of short signals by a
    // second run, whose samples are the same. Failure, std::bad_alloc as that.
    [[nodiscard]] std::string record() const { return makeRecord(); }

    std::function<std::string()> makeRecord;
};

// A convolution or a deconvolution for a program: options are read once, and signals are in memory.
// Bits, choices and records are those of the command line. Calls may run side by side in several
// threads.
class FoldCall {
public:
    // direction: FendraSettings::convolution or deconvolution.
    // WrongOption; Failure where a stored graph cannot be used.
    FoldCall(std::shared_ptr<const ModuleLibrary> moduleLibrary, std::int32_t direction,
             const CallOptions& given);
    // Failure as run(job); Stopped where the observer stopped it, whatever there was by then. The
    // signals are read until it returns; where a record needs them, they are copied.
    [[nodiscard]] CallResult run(const CallSignal& signal, const CallSignal& kernel,
                                 JobObserver& observer) const;

private:
    struct Prepared;
    std::shared_ptr<const Prepared> prepared;  // also of records that are made later
};
