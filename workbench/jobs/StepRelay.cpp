#include "workbench/jobs/StepRelay.h"

#include <algorithm>

StepRelay::StepRelay(JobObserver& jobObserver, std::int64_t rounds, int channels, int passesEach)
    : observer(jobObserver),
      width(channels),
      passes(passesEach),
      all(static_cast<double>(rounds) * channels * passesEach) {
    progress.rounds = rounds;
}

bool StepRelay::before(std::int64_t round, int channel) {
    const std::lock_guard lock(guard);
    done = std::max(done, (static_cast<double>(round) * width + channel) * passes);
    return tell(round, 0, 0);
}

bool StepRelay::advance(std::int64_t round, double passesMore, std::uint32_t loop,
                        std::uint32_t most) {
    const std::lock_guard lock(guard);
    done += passesMore;
    return tell(round, loop, most);
}

void StepRelay::add(double passesMore) {
    const std::lock_guard lock(guard);
    done += passesMore;
}

bool StepRelay::wantsEstimate() {
    const std::lock_guard lock(guard);
    return !stop && observer.wantsEstimate();
}

void StepRelay::show(int channel, const std::vector<double>& estimate) {
    const std::lock_guard lock(guard);
    observer.estimated(channel, estimate);
}

// Parts that sum to all passes may be rounded up.
bool StepRelay::tell(std::int64_t round, std::uint32_t loop, std::uint32_t most) {
    progress.round = std::max(progress.round, round);
    progress.share = std::min(1.0, done / all);
    progress.loop = loop;
    progress.most = most;
    stop = stop || !observer.advances(progress);
    return !stop;
}

bool StepRelay::stopped() const {
    const std::lock_guard lock(guard);
    return stop;
}
