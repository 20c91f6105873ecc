#include "workbench/module/ModuleRun.h"

#include "workbench/messages/Failure.h"
#include "workbench/module/pairing.h"
#include "workbench/signals/SignalReader.h"
#include "workbench/signals/valueCount.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <limits>

ModuleRun::ModuleRun(B_BasisModule& module, SignalReader& firstReader, SignalReader& secondReader,
                     const RunPlan& runPlan)
    : plan(runPlan),
      first(firstReader, plan.blockLength, plan.packet),
      second(secondReader, plan.blockLength, plan.packet),
      roundCount(std::max(first.rounds(), second.rounds())),
      driver(module) {
    checkPairing();
    checkSize();
}

void ModuleRun::checkPairing() const {
    const SignalInfo &a = first.info(), &b = second.info();
    checkChannels(a, b);
    if (first.rounds() != second.rounds() && first.rounds() != 1 && second.rounds() != 1) {
        throw Failure(
            fmt::format("{} has {} blocks and {} has {}; the counts must be equal, or one of "
                        "them 1: choose another --block",
                        a.source.shown, first.rounds(), b.source.shown, second.rounds()));
    }
    if (plan.equalLengths && !plan.pad) {
        checkEqualLengths();
    }
}

// All rounds between the first and the last are alike.
void ModuleRun::checkEqualLengths() const {
    for (const std::int64_t round : {std::int64_t{0}, roundCount - 1}) {
        checkLengths(first.info(), first.length(round), second.info(), second.length(round), round);
    }
}

// A module counts samples in 32 bits.
void ModuleRun::checkSize() const {
    constexpr std::int64_t longest = std::numeric_limits<std::int32_t>::max();
    if (resultLength(0) > longest) {
        throw Failure(
            fmt::format("{} and {} give more than {} samples at once; cut them with --per "
                        "block --block N",
                        first.info().source.shown, second.info().source.shown, longest));
    }
}

int ModuleRun::channels() const {
    return std::max(first.channels(), second.channels());
}

std::int64_t ModuleRun::samples() const {
    std::int64_t total = 0;
    for (std::int64_t round = 0; round < roundCount; ++round) {
        total += deliveredLength(round);
    }
    return total;
}

std::int64_t ModuleRun::resultLength(std::int64_t round) const {
    const std::int64_t firstLength = first.length(round), secondLength = second.length(round);
    return plan.pad ? firstLength + secondLength - 1 + plan.lag
                    : std::max(firstLength, secondLength);
}

std::int64_t ModuleRun::deliveredLength(std::int64_t round) const {
    return plan.pad && plan.divides ? first.length(round) : resultLength(round);
}

std::int64_t ModuleRun::shorterLength(std::int64_t round) const {
    return std::min(first.length(round), second.length(round));
}

void ModuleRun::drive(const Listener& listener) {
    std::vector<double> interleaved;  // of one round; it keeps its memory for the next
    const auto width = static_cast<std::size_t>(channels());
    for (std::int64_t round = 0; round < roundCount; ++round) {
        first.advance();
        second.advance();
        checkKernels(round);
        for (std::size_t c = 0; c < width; ++c) {
            const std::vector<double> result = runChannel(round, static_cast<int>(c), listener);
            interleaved.resize(valueCount(std::ssize(result), channels()));
            for (std::size_t i = 0; i < result.size(); ++i) {
                interleaved[i * width + c] = result[i];
            }
        }
        listener.deliver(interleaved.data(), static_cast<std::int64_t>(interleaved.size() / width));
    }
}

void ModuleRun::checkKernels(std::int64_t round) const {
    for (int channel = 0; plan.divides && channel < second.channels(); ++channel) {
        checkKernel(second.share(channel), round, second.info().source.shown);
    }
}

std::vector<double> ModuleRun::runChannel(std::int64_t round, int channel,
                                          const Listener& listener) {
    if (!listener.before(round, channel)) {
        throw Stopped{round};
    }
    const std::int64_t firstLength = first.length(round), secondLength = second.length(round);
    const std::int64_t length = resultLength(round);
    const bool padsFirst = plan.equalLengths || firstLength >= secondLength;
    const bool padsSecond = plan.equalLengths || firstLength < secondLength;
    const bool last = round == roundCount - 1;
    std::vector<double> result, numbers;
    try {
        feed(0, first, channel, padsFirst ? length - firstLength : 0, last);
        feed(1, second, channel, padsSecond ? length - secondLength : 0, last);
        driver.step();
        result = driver.takeSignal(length);
        numbers = driver.takeNumbers();
    } catch (const Failure& failure) {
        throw Failure(fmt::format("block {}: {}", round + 1, failure.what()));
    }
    if (!numbers.empty()) {
        reported.push_back({round, channel, numbers});
    }
    listener.after({round, channel, first.share(channel), second.share(channel), result, numbers});
    result.resize(static_cast<std::size_t>(deliveredLength(round)));
    return result;
}

// Per packet the share goes in as its blocks, and zeros as one block more; per block both make up
// the one block that the module pairs.
void ModuleRun::feed(int port, const BlockSource& source, int channel, std::int64_t padding,
                     bool last) {
    const std::vector<double>& share = source.share(channel);
    if (!plan.packet && padding > 0) {
        std::vector<double> padded = share;
        padded.resize(share.size() + static_cast<std::size_t>(padding));
        driver.feed(port, padded.data(), std::ssize(padded), last);
        return;
    }
    for (std::int64_t done = 0; done < std::ssize(share); done += source.blockLength()) {
        const std::int64_t count = std::min(source.blockLength(), std::ssize(share) - done);
        driver.feed(port, share.data() + done, count, last);
    }
    if (padding > 0) {
        const std::vector<double> zeros(static_cast<std::size_t>(padding));
        driver.feed(port, zeros.data(), padding, last);
    }
}
