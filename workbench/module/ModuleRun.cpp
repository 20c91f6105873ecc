#include "workbench/module/ModuleRun.h"

#include "host/B_BasisModule.h"
#include "host/BlockStream.h"
#include "workbench/Failure.h"
#include "workbench/files/SignalReader.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

// Markers that travel with a block.
static constexpr int moreFollow = 1, lastBlock = 2;

ModuleRun::ModuleRun(B_BasisModule& driven, SignalReader& firstReader, SignalReader& secondReader,
                     const RunPlan& runPlan)
    : module(driven),
      plan(runPlan),
      first(firstReader, plan.blockLength,
            plan.settings.executionMode == ModuleSettings::perPacket),
      second(secondReader, plan.blockLength,
             plan.settings.executionMode == ModuleSettings::perPacket),
      roundCount(std::max(first.rounds(), second.rounds())) {
    const SignalInfo& a = firstReader.info();
    const SignalInfo& b = secondReader.info();
    if (a.channels != b.channels && a.channels != 1 && b.channels != 1) {
        throw Failure(
            fmt::format("{} has {} channels and {} has {}; the counts must be equal, or one "
                        "of them 1",
                        a.path, a.channels, b.path, b.channels));
    }
    if (first.rounds() != second.rounds() && first.rounds() != 1 && second.rounds() != 1) {
        throw Failure(
            fmt::format("{} has {} blocks and {} has {}; the counts must be equal, or one of "
                        "them 1: choose another --block",
                        a.path, first.rounds(), b.path, second.rounds()));
    }
    if (resultLength(first.length(0), second.length(0)) >
        std::numeric_limits<std::int32_t>::max()) {
        throw Failure(
            fmt::format("{} and {} give more than {} samples at once; cut them with --per "
                        "block --block N",
                        a.path, b.path, std::numeric_limits<std::int32_t>::max()));
    }
    plan.settings.applyTo(module);
    module.DeleteStreams();
    module.SetInputStream(0, inputs.data());
    module.SetInputStream(1, inputs.data() + 1);
    module.AddOutputStream(0, &output);
}

ModuleRun::~ModuleRun() {
    module.DeleteStreams();
}

int ModuleRun::channels() const {
    return std::max(first.channels(), second.channels());
}

std::int64_t ModuleRun::samples() const {
    std::int64_t total = 0;
    for (std::int64_t round = 0; round < roundCount; ++round) {
        total += resultLength(first.length(round), second.length(round));
    }
    return total;
}

std::int64_t ModuleRun::resultLength(std::int64_t firstLength, std::int64_t secondLength) const {
    if (!plan.pad) {
        return std::max(firstLength, secondLength);
    }
    const bool lags = plan.settings.direction == ModuleSettings::convolution &&
                      plan.settings.method == ModuleSettings::timeDomain;
    return firstLength + secondLength - (lags ? 0 : 1);
}

void ModuleRun::drive(const Deliver& deliver, const Progress& progress) {
    std::vector<double> interleaved;
    const auto width = static_cast<std::size_t>(channels());
    for (std::int64_t round = 0; round < roundCount; ++round) {
        progress(round, roundCount);
        first.advance();
        second.advance();
        for (std::size_t c = 0; c < width; ++c) {
            const std::vector<double> result = runChannel(round, static_cast<int>(c));
            interleaved.resize(result.size() * width);
            for (std::size_t i = 0; i < result.size(); ++i) {
                interleaved[i * width + c] = result[i];
            }
        }
        deliver(interleaved.data(), static_cast<std::int64_t>(interleaved.size() / width));
    }
    progress(roundCount, roundCount);
}

std::vector<double> ModuleRun::runChannel(std::int64_t round, int channel) {
    const std::int64_t firstLength = first.length(round), secondLength = second.length(round);
    const std::int64_t length = resultLength(firstLength, secondLength);
    const std::int64_t padding = length - std::max(firstLength, secondLength);
    const bool firstIsLonger = firstLength >= secondLength, last = round == roundCount - 1;
    feed(0, first, channel, firstIsLonger ? padding : 0, last);
    feed(1, second, channel, firstIsLonger ? 0 : padding, last);
    step(round);

    std::vector<double> result;
    int marker = 0;
    if (!output.readBlock(marker, result) || static_cast<std::int64_t>(result.size()) != length) {
        throw Failure(fmt::format("block {}: the module gave {} samples where {} were due",
                                  round + 1, result.size(), length));
    }
    return result;
}

// Per packet the share goes in as its blocks, and zeros as one block more; per block both make up
// the one block that the module pairs.
void ModuleRun::feed(int port, const BlockSource& source, int channel, std::int64_t padding,
                     bool last) {
    const std::vector<double>& share = source.share(channel);
    BlockStream& input = inputs[static_cast<std::size_t>(port)];
    const int marker = last ? lastBlock : moreFollow;
    if (plan.settings.executionMode == ModuleSettings::perBlock && padding > 0) {
        std::vector<double> padded = share;
        padded.resize(share.size() + static_cast<std::size_t>(padding));
        input.writeBlock(marker, padded.data(), static_cast<int>(padded.size()));
        return;
    }
    for (std::int64_t done = 0; done < std::ssize(share); done += source.blockLength()) {
        const std::int64_t count = std::min(source.blockLength(), std::ssize(share) - done);
        input.writeBlock(marker, share.data() + done, static_cast<int>(count));
    }
    if (padding > 0) {
        const std::vector<double> zeros(static_cast<std::size_t>(padding));
        input.writeBlock(marker, zeros.data(), static_cast<int>(padding));
    }
}

void ModuleRun::step(std::int64_t round) {
    module.Init();
    module.Fetch();
    const int code = module.Process();
    module.Done();
    if (code != 0) {
        throw Failure(fmt::format("block {}: the module ended with code {} ({})", round + 1, code,
                                  code == -5 ? "this method needs two signals of equal length"
                                             : "the run failed, or memory is exhausted"));
    }
}
