#include "workbench/module/ModuleRun.h"

#include "workbench/messages/Failure.h"
#include "workbench/module/ModuleDriver.h"
#include "workbench/module/pairing.h"
#include "workbench/signals/SignalReader.h"
#include "workbench/signals/valueCount.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <limits>

ModuleRun::ModuleRun(SignalReader& firstReader, SignalReader& secondReader, const RunPlan& runPlan)
    : plan(runPlan),
      first(firstReader, plan.blockLength, plan.packet),
      second(secondReader, plan.blockLength, plan.packet),
      roundCount(std::max(first.rounds(), second.rounds())) {
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
            fmt::format("{} and {} give more than {} samples at once; convolve with --pad, or cut "
                        "them with --per block --block N",
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
    return plan.pad ? firstLength + secondLength - 1 : std::max(firstLength, secondLength);
}

std::int64_t ModuleRun::deliveredLength(std::int64_t round) const {
    return plan.pad && plan.divides ? first.length(round) : resultLength(round);
}

std::int64_t ModuleRun::shorterLength(std::int64_t round) const {
    return std::min(first.length(round), second.length(round));
}

ModuleRun::Round ModuleRun::next() {
    Round round{position++, first.next(), second.next(), {}};
    round.answers.resize(static_cast<std::size_t>(channels()));
    checkKernels(round);
    return round;
}

void ModuleRun::checkKernels(const Round& round) const {
    for (int channel = 0; plan.divides && channel < second.channels(); ++channel) {
        checkKernel(round.second->of(channel), round.number, second.info().source.shown);
    }
}

ModuleRun::Answer ModuleRun::answer(ModuleDriver& driver, const Round& round, int channel) const {
    const std::vector<double>&a = round.first->of(channel), &b = round.second->of(channel);
    const std::int64_t length = resultLength(round.number);
    const bool padsFirst = plan.equalLengths || a.size() >= b.size();
    const bool padsSecond = plan.equalLengths || a.size() < b.size();
    const bool last = round.number == roundCount - 1;
    Answer made;
    try {
        feed(driver, 0, a, first.blockLength(), padsFirst ? length - std::ssize(a) : 0, last);
        feed(driver, 1, b, second.blockLength(), padsSecond ? length - std::ssize(b) : 0, last);
        driver.step();
        made.samples = driver.takeSignal(length);
        made.numbers = driver.takeNumbers();
    } catch (const Stopped&) {
        throw;
    } catch (const Failure& failure) {
        throw Failure(fmt::format("block {}: {}", round.number + 1, failure.what()));
    }
    return made;
}

// Per packet the share goes in as its blocks, and zeros as one block more; per block both make up
// the one block that the module pairs.
void ModuleRun::feed(ModuleDriver& driver, int port, const std::vector<double>& share,
                     std::int64_t blockLength, std::int64_t padding, bool last) const {
    if (!plan.packet && padding > 0) {
        std::vector<double> padded = share;
        padded.resize(share.size() + static_cast<std::size_t>(padding));
        driver.feed(port, padded.data(), std::ssize(padded), last);
        return;
    }
    for (std::int64_t done = 0; done < std::ssize(share); done += blockLength) {
        const std::int64_t count = std::min(blockLength, std::ssize(share) - done);
        driver.feed(port, share.data() + done, count, last);
    }
    if (padding > 0) {
        const std::vector<double> zeros(static_cast<std::size_t>(padding));
        driver.feed(port, zeros.data(), padding, last);
    }
}

ModuleRun::Channel ModuleRun::channelOf(const Round& round, int channel) {
    const Answer& answer = round.answers[static_cast<std::size_t>(channel)];
    return {round.number,   channel,       round.first->of(channel), round.second->of(channel),
            answer.samples, answer.numbers};
}

std::vector<double> ModuleRun::delivered(const Round& round) const {
    const std::size_t width = round.answers.size();
    const auto length = static_cast<std::size_t>(deliveredLength(round.number));
    std::vector<double> interleaved(valueCount(deliveredLength(round.number), channels()));
    for (std::size_t c = 0; c < width; ++c) {
        const double* const samples = round.answers[c].samples.data();
        for (std::size_t i = 0; i < length; ++i) {
            interleaved[i * width + c] = samples[i];
        }
    }
    return interleaved;
}
