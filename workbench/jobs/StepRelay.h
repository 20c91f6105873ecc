#pragma once

#include "host/RunObserver.h"
#include "workbench/jobs/JobObserver.h"

#include <cstdint>

// Tells the observer of a job of the rounds and channels that its thread runs, and, as the host's
// observer, of the steps within each.
class StepRelay final : public RunObserver {
public:
    // passesEach: runs of the module for each channel of a round.
    StepRelay(JobObserver& jobObserver, std::int64_t rounds, int channels, int passesEach = 1);
    StepRelay(const StepRelay&) = delete;
    StepRelay& operator=(const StepRelay&) = delete;
    ~StepRelay() override;

    // Before a run; false: stop.
    bool before(std::int64_t round, int channel, int pass = 0);
    bool afterStep(const RunStep& step) override;
    void afterFailure(RunFailure /*why*/) override {}

    // Whether the observer has stopped an iteration.
    [[nodiscard]] bool stopped() const { return stop; }

private:
    JobObserver& observer;
    RunObserver* previous;
    JobProgress progress;
    double parts;       // of the whole: rounds times channels times passes
    double done = 0.0;  // of them
    int width, passes;
    bool stop = false;
};
