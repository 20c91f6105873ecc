#include "workbench/jobs/StepRelay.h"

StepRelay::StepRelay(JobObserver& jobObserver, std::int64_t rounds, int channels, int passesEach)
    : observer(jobObserver),
      previous(install(this)),
      parts(static_cast<double>(rounds) * channels * passesEach),
      width(channels),
      passes(passesEach) {
    progress.rounds = rounds;
}

StepRelay::~StepRelay() {
    install(previous);
}

bool StepRelay::before(std::int64_t round, int channel, int pass) {
    done = (static_cast<double>(round) * width + channel) * passes + pass;
    progress.round = round;
    progress.share = done / parts;
    progress.loop = progress.most = 0;
    return !stop && observer.advances(progress);
}

bool StepRelay::afterStep(const RunStep& step) {
    progress.loop = step.loop;
    progress.most = step.most;
    progress.share = (done + static_cast<double>(step.loop) / step.most) / parts;
    stop = stop || !observer.advances(progress);
    return !stop;
}
