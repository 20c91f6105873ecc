#include "workbench/jobs/ChannelRelay.h"

#include <utility>

ChannelRelay::ChannelRelay(StepRelay& jobRelay, std::int64_t ofRound, int passesOfIt)
    : relay(jobRelay), previous(install(this)), round(ofRound), passes(passesOfIt) {}

ChannelRelay::~ChannelRelay() {
    relay.add(riseTo(passes));
    install(previous);
}

// By how much that is more.
double ChannelRelay::riseTo(double place) {
    return place - std::exchange(reached, place);
}

bool ChannelRelay::before(int pass) {
    current = pass;
    return relay.advance(round, riseTo(pass));
}

bool ChannelRelay::afterStep(const RunStep& step) {
    const double part = static_cast<double>(step.loop) / step.most;
    return relay.advance(round, riseTo(current + part), step.loop, step.most);
}
