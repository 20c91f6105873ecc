#include "workbench/jobs/ChannelRelay.h"

#include <algorithm>
#include <new>
#include <utility>

ChannelRelay::ChannelRelay(StepRelay& jobRelay, std::int64_t ofRound, int passesOfIt)
    : relay(jobRelay),
      previous(install(this)),
      round(ofRound),
      passes(passesOfIt),
      goesOn([this](double /*share*/) { return reach(0.0, 0, 0); }),
      watch(goesOn) {}

ChannelRelay::~ChannelRelay() {
    relay.add(passes - reached);
    install(previous);
}

void ChannelRelay::showEstimates(int channelOfResult, Bring bringEstimate) {
    channel = channelOfResult;
    bring = std::move(bringEstimate);
}

// What was reached before stays reached.
bool ChannelRelay::reach(double pass, std::uint32_t loop, std::uint32_t most) {
    const double place = std::clamp(pass, reached, std::max<double>(reached, passes));
    return relay.advance(round, place - std::exchange(reached, place), loop, most);
}

bool ChannelRelay::before(int pass) {
    current = pass;
    return reach(pass, 0, 0);
}

// The loop count is 1 before the first step, and most after the last one that there can be.
bool ChannelRelay::within(const RunPart& part) {
    const double share =
        part.most < 2 ? part.share : (part.loop - 1.0 + part.share) / (part.most - 1.0);
    return reach(current + share, part.loop, part.most);
}

bool ChannelRelay::afterStep(const RunStep& step) {
    show(step);
    return within({0.0, step.loop, step.most});
}

// A run is not lost by want of memory for a look at it.
void ChannelRelay::show(const RunStep& step) {
    if (!bring || current > 0 || !relay.wantsEstimate()) {
        return;
    }
    try {
        relay.show(channel, bring(step.estimate, step.length));
    } catch (const std::bad_alloc&) {
    }
}
