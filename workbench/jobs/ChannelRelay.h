#pragma once

#include "host/RunObserver.h"
#include "workbench/jobs/StepRelay.h"

#include <cstdint>

// One channel of a round, as far as the relay of its job is concerned: the host's observer in the
// thread that runs it. At its end all its passes count as done.
class ChannelRelay final : public RunObserver {
public:
    ChannelRelay(StepRelay& jobRelay, std::int64_t ofRound, int passesOfIt = 1);
    ChannelRelay(const ChannelRelay&) = delete;
    ChannelRelay& operator=(const ChannelRelay&) = delete;
    ~ChannelRelay() override;

    // Before a run of the module; false: stop.
    bool before(int pass = 0);
    bool afterStep(const RunStep& step) override;
    void afterFailure(RunFailure /*why*/) override {}

private:
    double riseTo(double place);

    StepRelay& relay;
    RunObserver* previous;
    std::int64_t round;
    int passes, current = 0;
    double reached = 0.0;  // passes
};
