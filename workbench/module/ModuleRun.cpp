#include "workbench/module/ModuleRun.h"

#include "host/B_BasisModule.h"
#include "platform/Windows1252.h"
#include "workbench/messages/Failure.h"
#include "workbench/module/FendraModule.h"
#include "workbench/signals/SignalReader.h"
#include "workbench/signals/valueCount.h"
#include "workbench/system/systemMemory.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <limits>

// Markers that travel with a block.
static constexpr int moreFollow = 1, lastBlock = 2;

static bool isPacket(const RunPlan& plan) {
    return plan.settings.executionMode == FendraSettings::perPacket;
}

ModuleRun::ModuleRun(B_BasisModule& driven, SignalReader& firstReader, SignalReader& secondReader,
                     const RunPlan& runPlan)
    : module(driven),
      plan(runPlan),
      first(firstReader, plan.blockLength, isPacket(plan)),
      second(secondReader, plan.blockLength, isPacket(plan)),
      roundCount(std::max(first.rounds(), second.rounds())) {
    checkPairing();
    checkSize();
    applySettings(plan.settings, module);
    module.DeleteStreams();
    module.SetInputStream(0, inputs.data());
    module.SetInputStream(1, inputs.data() + 1);
    module.AddOutputStream(0, &output);
    module.AddOutputStream(1, numberOutputs.data());
    module.AddOutputStream(2, numberOutputs.data() + 1);
}

ModuleRun::~ModuleRun() {
    module.DeleteStreams();
}

void ModuleRun::checkPairing() const {
    const SignalInfo& a = first.reader.info();
    const SignalInfo& b = second.reader.info();
    if (a.channels != b.channels && a.channels != 1 && b.channels != 1) {
        throw Failure(
            fmt::format("{} has {} channels and {} has {}; the counts must be equal, or one "
                        "of them 1",
                        a.source.shown, a.channels, b.source.shown, b.channels));
    }
    if (first.rounds() != second.rounds() && first.rounds() != 1 && second.rounds() != 1) {
        throw Failure(
            fmt::format("{} has {} blocks and {} has {}; the counts must be equal, or one of "
                        "them 1: choose another --block",
                        a.source.shown, first.rounds(), b.source.shown, second.rounds()));
    }
    if (!plan.settings.reportsNumbers() || plan.pad) {
        return;
    }
    for (const std::int64_t round : {std::int64_t{0}, roundCount - 1}) {
        if (first.length(round) != second.length(round)) {
            throw Failure(
                fmt::format("block {}: {} has {} samples and {} has {}; this method needs "
                            "equal lengths: --pad appends zeros to the shorter",
                            round + 1, a.source.shown, first.length(round), b.source.shown,
                            second.length(round)));
        }
    }
}

void ModuleRun::checkSize() const {
    const std::int64_t length = resultLength(0);
    if (length > std::numeric_limits<std::int32_t>::max()) {
        throw Failure(
            fmt::format("{} and {} give more than {} samples at once; cut them with --per "
                        "block --block N",
                        first.reader.info().source.shown, second.reader.info().source.shown,
                        std::numeric_limits<std::int32_t>::max()));
    }
    if (!plan.settings.reportsNumbers() || plan.settings.method != FendraSettings::pseudoInverse) {
        return;
    }
    constexpr double gigabyte = 1e9;
    const double needed = 8.0 * static_cast<double>(length) * static_cast<double>(length);
    if (needed > freeMemory()) {
        throw Failure(
            fmt::format("the filter for {} samples takes {:.3g} GB of memory, and {:.3g} GB "
                        "are free; cut the signals with --block",
                        length, needed / gigabyte, freeMemory() / gigabyte));
    }
}

int ModuleRun::channels() const {
    return std::max(first.channels(), second.channels());
}

std::int64_t ModuleRun::samples() const {
    std::int64_t total = 0;
    for (std::int64_t round = 0; round < roundCount; ++round) {
        total += resultLength(round);
    }
    return total;
}

std::int64_t ModuleRun::resultLength(std::int64_t round) const {
    const std::int64_t firstLength = first.length(round), secondLength = second.length(round);
    if (!plan.pad || plan.settings.reportsNumbers()) {
        return std::max(firstLength, secondLength);
    }
    const bool lags = plan.settings.direction == FendraSettings::convolution &&
                      plan.settings.method == FendraSettings::timeDomain;
    return firstLength + secondLength - (lags ? 0 : 1);
}

double ModuleRun::work() const {
    const FendraSettings& settings = plan.settings;
    const bool convolution = settings.direction == FendraSettings::convolution;
    double total = 0.0;
    for (std::int64_t round = 0; round < roundCount; ++round) {
        const auto length = static_cast<double>(resultLength(round));
        if (convolution && settings.method == FendraSettings::timeDomain) {
            total +=
                length * static_cast<double>(std::min(first.length(round), second.length(round)));
        } else if (!convolution && settings.method == FendraSettings::vanCittert) {
            total += 2.0 * settings.maxIterations * length * length;
        } else if (!convolution && settings.method == FendraSettings::pseudoInverse) {
            total += length * length * length / 3.0;
        }
    }
    return total * channels();
}

std::array<std::string, 2> ModuleRun::numberNames() const {
    return {toUtf8(module.GetOutputName(1)), toUtf8(module.GetOutputName(2))};
}

void ModuleRun::drive(const Deliver& deliver, const Progress& progress) {
    std::vector<double> interleaved;
    const auto width = static_cast<std::size_t>(channels());
    for (std::int64_t round = 0; round < roundCount; ++round) {
        progress(round, roundCount);
        first.advance();
        second.advance();
        checkKernel(round);
        for (std::size_t c = 0; c < width; ++c) {
            const std::vector<double> result = runChannel(round, static_cast<int>(c));
            interleaved.resize(valueCount(std::ssize(result), channels()));
            for (std::size_t i = 0; i < result.size(); ++i) {
                interleaved[i * width + c] = result[i];
            }
        }
        deliver(interleaved.data(), static_cast<std::int64_t>(interleaved.size() / width));
    }
    progress(roundCount, roundCount);
}

void ModuleRun::checkKernel(std::int64_t round) const {
    if (plan.settings.direction == FendraSettings::convolution) {
        return;
    }
    for (int channel = 0; channel < second.channels(); ++channel) {
        const std::vector<double>& kernel = second.share(channel);
        if (std::all_of(kernel.begin(), kernel.end(), [](double x) { return x == 0.0; })) {
            throw Failure(fmt::format("block {}: {} is all zero; give a kernel to deconvolve by",
                                      round + 1, second.reader.info().source.shown));
        }
    }
}

std::vector<double> ModuleRun::runChannel(std::int64_t round, int channel) {
    const std::int64_t firstLength = first.length(round), secondLength = second.length(round);
    const std::int64_t length = resultLength(round);
    const bool padsShorter = plan.settings.reportsNumbers();
    const bool padsFirst = padsShorter || firstLength >= secondLength;
    const bool padsSecond = padsShorter || firstLength < secondLength;
    const bool last = round == roundCount - 1;
    feed(0, first, channel, padsFirst ? length - firstLength : 0, last);
    feed(1, second, channel, padsSecond ? length - secondLength : 0, last);
    step(round);

    std::vector<double> result;
    int marker = 0;
    if (!output.readBlock(marker, result) || static_cast<std::int64_t>(result.size()) != length) {
        throw Failure(fmt::format("block {}: the module gave {} samples where {} were due",
                                  round + 1, result.size(), length));
    }
    if (plan.settings.reportsNumbers()) {
        takeNumbers(round, channel);
    }
    return result;
}

void ModuleRun::takeNumbers(std::int64_t round, int channel) {
    ReportedNumbers numbers{round, channel, {}};
    for (std::size_t i = 0; i < numberOutputs.size(); ++i) {
        std::vector<double> number;
        int marker = 0;
        if (!numberOutputs[i].readBlock(marker, number) || number.size() != 1) {
            throw Failure(
                fmt::format("block {}: the module gave no number on output {}", round + 1, i + 1));
        }
        numbers.values[i] = number[0];
    }
    reported.push_back(numbers);
}

// Per packet the share goes in as its blocks, and zeros as one block more; per block both make up
// the one block that the module pairs.
void ModuleRun::feed(int port, const BlockSource& source, int channel, std::int64_t padding,
                     bool last) {
    const std::vector<double>& share = source.share(channel);
    BlockStream& input = inputs[static_cast<std::size_t>(port)];
    const int marker = last ? lastBlock : moreFollow;
    if (!isPacket(plan) && padding > 0) {
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
