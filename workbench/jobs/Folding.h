#pragma once

#include "workbench/jobs/JobObserver.h"
#include "workbench/jobs/RunRecord.h"
#include "workbench/signals/SignalAxis.h"

#include <optional>

class Findings;
class ResultTap;
class StepRelay;
struct Method;

// A way to do a job. What can be refused is refused when it is made, and all but the samples and
// the numbers is known then.
class Folding {
public:
    virtual ~Folding() = default;

    // That runs, with what was found in the data.
    [[nodiscard]] virtual const Method& method() const = 0;
    [[nodiscard]] virtual JobSize size() const = 0;
    // Settings, size, place and choice of the result.
    virtual void describe(RunRecord& record) const = 0;
    [[nodiscard]] virtual std::optional<SignalAxis> axis() const = 0;
    // Runs of the module for each channel of a round.
    [[nodiscard]] virtual int passes() const { return 1; }
    // Whether lower and upper bound stand beside each value of the result.
    [[nodiscard]] virtual bool hasBand() const { return false; }

    // Runs the module, and passes the result on. What was reported goes into the record.
    virtual void run(ResultTap& tap, StepRelay& relay, Findings& findings, RunRecord& record) = 0;
};
