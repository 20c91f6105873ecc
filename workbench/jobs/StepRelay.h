#pragma once

#include "workbench/jobs/JobObserver.h"

#include <cstdint>
#include <mutex>
#include <vector>

// Tells the observer of a job how far its rounds and channels have come: one call at a time,
// whichever thread it comes from, and never a smaller share than before. Once the observer has
// stopped the job, it is not asked again.
class StepRelay {
public:
    // passesEach: runs of the module for each channel of a round.
    StepRelay(JobObserver& jobObserver, std::int64_t rounds, int channels, int passesEach = 1);

    // Before a channel of a round, where all before it are done; false: stop.
    bool before(std::int64_t round, int channel);

    // So many passes more are done, or parts of one: in a round, at a loop of an iteration that has
    // as many at most; 0: in none. false: stop.
    bool advance(std::int64_t round, double passesMore, std::uint32_t loop = 0,
                 std::uint32_t most = 0);
    // The same without a report, which comes with the next one.
    void add(double passesMore);

    // Whether the observer wants the estimate of a step, and that estimate, for a channel.
    bool wantsEstimate();
    void show(int channel, const std::vector<double>& estimate);

    // Whether the observer has stopped the job.
    [[nodiscard]] bool stopped() const;

private:
    bool tell(std::int64_t round, std::uint32_t loop, std::uint32_t most);

    JobObserver& observer;
    const int width, passes;
    const double all;          // passes of the job
    mutable std::mutex guard;  // of what follows
    JobProgress progress;
    double done = 0.0;  // passes
    bool stop = false;
};
