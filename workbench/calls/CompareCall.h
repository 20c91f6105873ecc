#pragma once

#include "workbench/calls/CallOptions.h"
#include "workbench/calls/CallSignal.h"
#include "workbench/jobs/CompareJob.h"

#include <memory>
#include <string>
#include <vector>

class ModuleLibrary;

// A comparison of methods for a program, as FoldCall is for one of them.
class CompareCall {
public:
    // WrongOption.
    CompareCall(std::shared_ptr<const ModuleLibrary> moduleLibrary, const CallOptions& given);

    // The methods in their order, failures in them. truth: the signal that should come out; null:
    // not known. The signals are copied. Failure where one of them is refused; Stopped, by the
    // observer.
    [[nodiscard]] std::vector<MethodOutcome> run(const CallSignal& signal, const CallSignal& kernel,
                                                 const CallSignal* truth,
                                                 JobObserver& observer) const;

private:
    const std::shared_ptr<const ModuleLibrary> library;
    CompareJob prepared;  // without signals
};

// What the command prints of it: the table, and the record of --json. withTruth: errors are known.
std::string tableOf(const std::vector<MethodOutcome>& outcomes, bool withTruth);
std::string recordOf(const std::vector<MethodOutcome>& outcomes);
