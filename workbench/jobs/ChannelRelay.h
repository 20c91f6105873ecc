#pragma once

#include "host/RunObserver.h"
#include "kernels/WorkWatch.h"
#include "workbench/jobs/StepRelay.h"

#include <cstdint>
#include <functional>
#include <vector>

// One channel of a round, as far as the relay of its job is concerned: in the thread that runs it,
// the host's observer, and what watches the workbench's own work. At its end all its passes count
// as done.
class ChannelRelay final : public RunObserver {
public:
    // passesOfIt: 0 where the channel has no share in the job.
    ChannelRelay(StepRelay& jobRelay, std::int64_t ofRound, int passesOfIt = 1);
    ChannelRelay(const ChannelRelay&) = delete;
    ChannelRelay& operator=(const ChannelRelay&) = delete;
    ~ChannelRelay() override;

    // Shows the estimates of the first pass, brought to where the samples of the result stand, to
    // the observer of the job as far as it wants them.
    using Bring = std::function<std::vector<double>(const double* estimate, int length)>;
    void showEstimates(int channelOfResult, Bring bringEstimate);

    // Before a run of the module; false: stop.
    bool before(int pass = 0);
    bool afterStep(const RunStep& step) override;
    void afterFailure(RunFailure /*why*/) override {}
    bool within(const RunPart& part) override;

private:
    bool reach(double pass, std::uint32_t loop, std::uint32_t most);
    void show(const RunStep& step);

    StepRelay& relay;
    RunObserver* previous;
    std::int64_t round;
    int passes, current = 0;
    double reached = 0.0;  // passes
    int channel = 0;
    Bring bring;
    kernels::WorkWatch::Question goesOn;
    kernels::WorkWatch watch;
};
