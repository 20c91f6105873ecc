#include "workbench/jobs/LinearConvolution.h"

#include "workbench/analysis/OverlapAdd.h"
#include "workbench/jobs/ChannelRelay.h"
#include "workbench/jobs/ModuleConvolution.h"
#include "workbench/jobs/ResultTap.h"
#include "workbench/jobs/StepRelay.h"
#include "workbench/jobs/jobSize.h"
#include "workbench/methods/Method.h"
#include "workbench/module/pairing.h"
#include "workbench/signals/Signal.h"
#include "workbench/signals/valueCount.h"
#include "workbench/system/systemMemory.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <utility>

bool LinearConvolution::does(const FoldJob& job) {
    return job.settings.direction == FendraSettings::convolution && job.cutting.pad;
}

static bool inTime(const Method& method) {
    return method.code == FendraSettings::timeDomain;
}

namespace {

// What was read of a signal before, and then the signal.
class ContinuedReader final : public SignalReader {
public:
    ContinuedReader(std::unique_ptr<SignalReader> head, std::unique_ptr<SignalReader> following)
        : before(std::move(head)), after(std::move(following)) {
        facts = after->info();
    }

    std::int64_t read(double* interleaved, std::int64_t count) override {
        const std::int64_t got = before->read(interleaved, count);
        const std::int64_t more = after->read(interleaved + got * facts.channels, count - got);
        facts.sha256 = after->info().sha256;  // known at its end
        return got + more;
    }

private:
    std::unique_ptr<SignalReader> before, after;
};

}  // namespace

// A signal of unknown length that ends before it is longer than the other one is read to its end.
static void findLength(std::unique_ptr<SignalReader>& reader, const SignalInfo& other) {
    if (reader->info().samples != 0) {
        return;
    }
    Signal head{reader->info(), {}};
    const std::int64_t most = other.samples + 1;
    head.interleaved.resize(valueCount(most, head.info.channels));
    head.info.samples = reader->read(head.interleaved.data(), most);
    const bool ended = head.info.samples < most;
    head.info.sha256 = reader->info().sha256;
    std::unique_ptr<SignalReader> read = sourceOf(std::make_shared<const Signal>(head)).open();
    reader = ended ? std::move(read)
                   : std::make_unique<ContinuedReader>(std::move(read), std::move(reader));
}

std::unique_ptr<SignalReader> LinearConvolution::findKernel(std::unique_ptr<SignalReader> first,
                                                            std::unique_ptr<SignalReader> second) {
    const SignalInfo a = first->info(), b = second->info();
    checkChannels(a, b);
    findLength(first, b);
    findLength(second, a);
    const std::int64_t lengthOfA = first->info().samples, lengthOfB = second->info().samples;
    const bool swapped = lengthOfB == 0 || (lengthOfA != 0 && lengthOfA < lengthOfB);
    signal = std::move(swapped ? second : first);
    input = swapped ? 1 : 0;
    return std::move(swapped ? first : second);
}

LinearConvolution::LinearConvolution(const FoldJob& foldJob, const ModuleLibrary& library,
                                     std::unique_ptr<SignalReader> first,
                                     std::unique_ptr<SignalReader> second)
    : job(foldJob), used(*Method::selectedBy(job.settings)) {
    place.axis = first->info().axis;
    const auto reader = findKernel(std::move(first), std::move(second));
    channels = std::max(signal->info().channels, reader->info().channels);
    chooseWidth(reader->info());
    const Signal kernel = Signal::of(*reader);
    taps = kernel.info.samples;
    kernelDigest = kernel.info.sha256;
    if (inTime(used)) {
        FendraSettings perBlock = job.settings;
        perBlock.executionMode = FendraSettings::perBlock;
        modules.emplace(library, perBlock);
    }
    for (int channel = 0; channel < kernel.info.channels; ++channel) {
        kernels.push_back(makeKernel(channelOf(kernel, channel)));
    }
    room.after = kernels[0]->history();
    if (job.treatment.origin.kind != Origin::Kind::none) {
        place = {signal->info().axis, zeroOf(kernel, job.treatment.origin), true, used.lag};
    } else {
        room.before = used.lag;
    }
}

std::unique_ptr<BlockConvolution> LinearConvolution::makeKernel(std::vector<double> samples) {
    if (modules) {
        return std::make_unique<ModuleConvolution>(*modules, used.lag, std::move(samples), block);
    }
    return std::make_unique<OverlapAdd>(std::move(samples), block);
}

// Operations for each value of the result: the sums of the module, or about that of transforms.
static double workOfValue(const Method& method, std::int64_t taps) {
    constexpr double transforms = 64.0;
    return inTime(method) ? static_cast<double>(taps) : transforms;
}

static constexpr double worthAThread = 1e7;  // operations

// As many blocks as make tasks for all threads, worth starting these.
static std::int64_t blocksAtOnce(int threads, int channels, double workOfBlock) {
    const double worthAll = std::ceil(threads * worthAThread / workOfBlock);
    return threads == 1 ? 1
                        : std::max<std::int64_t>(threads / std::gcd(threads, channels),
                                                 static_cast<std::int64_t>(worthAll));
}

static void refuseLongKernel(const SignalInfo& kernel) {
    if (kernel.samples > BlockConvolution::mostTaps) {
        throw Failure(fmt::format(
            "{} has {} samples, and a kernel has at most {}; cut the shorter of both signals",
            kernel.source.shown, kernel.samples, BlockConvolution::mostTaps));
    }
}

// The sums of the time domain do not depend on the block, so that each thread gets a share.
BlockConvolution::Demand LinearConvolution::chooseBlock(std::int64_t m) {
    const std::int64_t given = job.cutting.block, n = signal->info().samples;
    block = comesAlong() ? given : std::min(given, n + m);
    if (!inTime(used)) {
        return OverlapAdd::demand(m, block);
    }
    if (given == 0 && !comesAlong()) {
        const std::int64_t share = (n + m) * channels / width.threads + 1;
        block = std::min(ModuleConvolution::demand(m, 0).block, std::max(share, m));
    }
    return ModuleConvolution::demand(m, block);
}

// A kernel that does not fit in memory is refused, and threads run as far as it goes. Of a pipe one
// block at a time is read: what has come must not wait for more.
void LinearConvolution::chooseWidth(const SignalInfo& kernel) {
    refuseLongKernel(kernel);
    const std::int64_t m = kernel.samples;
    const double workOfSample = channels * workOfValue(used, m);
    const double whole = static_cast<double>(signal->info().samples + m) * workOfSample;
    width.threads = static_cast<int>(std::min(1.0 * job.threads, 1.0 + whole / worthAThread));
    const BlockConvolution::Demand demand = chooseBlock(m);
    const double kept = kernel.channels * (demand.kept + static_cast<double>(m) * sizeof(double));
    const double window = signal->info().channels * static_cast<double>(demand.block + m);
    const double perBlock = channels * demand.perBlock + 2.0 * window * sizeof(double);
    checkKernelMemory(kernel, kept + perBlock);
    const double workOfBlock = static_cast<double>(demand.block) * workOfSample;
    const auto blocks = [&] {
        return comesAlong() ? 1 : blocksAtOnce(width.threads, channels, workOfBlock);
    };
    const double most = width.threads == 1 ? 0.0 : (freeMemory() - kept) / perBlock;
    while (width.threads > 1 && static_cast<double>(blocks()) > most) {
        --width.threads;
    }
    width.blocks = blocks();
}

// Of that many samples; of 0, an unknown number, one.
std::int64_t LinearConvolution::blocks(std::int64_t samples) const {
    const std::int64_t all = samples + room.before + room.after;
    return samples == 0 ? 1 : (all - 1) / kernels[0]->block() + 1;
}

JobSize LinearConvolution::size() const {
    JobSize size;
    size.rounds = blocks(signal->info().samples);
    const std::int64_t history = kernels[0]->history();
    const auto sums = static_cast<double>(signal->info().samples + (size.rounds + 1) * history);
    const JobSize one = sizeOfRun(used, job.settings, sums, static_cast<double>(taps));
    size.multiplyAdds = channels * one.multiplyAdds;
    size.seconds = channels * one.seconds;
    return size;
}

void LinearConvolution::describe(RunRecord& record) const {
    record.settings = job.settings;
    record.overlapAdd = !inTime(used);
    record.channels = channels;
    record.moved = place.movement;
    describeLengths(record, signal->info().samples);
}

// samples: of the signal; 0: not known. A pipe has its digest at its end. Blocks that nobody asked
// for may depend on the threads.
void LinearConvolution::describeLengths(RunRecord& record, std::int64_t samples) const {
    record.inputs[input].samples = samples;
    record.inputs[1 - input].samples = taps;
    const auto note = [](SignalInfo& info, const std::string& sha256) {
        info.sha256 = sha256.empty() ? info.sha256 : sha256;
    };
    note(record.inputs[input], signal->info().sha256);
    note(record.inputs[1 - input], kernelDigest);
    record.samples = samples == 0 ? 0 : samples + taps - 1 + room.before;
    record.rounds = job.cutting.block == 0 ? 1 : blocks(samples);
}

// The first samples are kept, if they stand at the end.
void LinearConvolution::pass(ResultTap& tap, const double* interleaved, std::int64_t samples) {
    const std::int64_t kept = std::min(place.turned - std::ssize(turned) / channels, samples);
    turned.insert(turned.end(), interleaved, interleaved + kept * channels);
    if (samples > kept) {
        tap.take(interleaved + kept * channels, samples - kept);
    }
}

void LinearConvolution::throwStopped(std::int64_t done) const {
    throw Stopped(fmt::format("stopped after {} of {} blocks; nothing is written", done,
                              blocks(signal->info().samples)));
}

// Of a signal that comes along, nobody knows which share a block is.
void LinearConvolution::convolve(BlockRounds& rounds, StepRelay& relay, std::int64_t done) const {
    try {
        rounds.convolve([&](std::int64_t inRound, const std::function<void()>& work) {
            const bool counts = inRound >= 0 && !comesAlong();
            const ChannelRelay watch(relay, counts ? done + inRound : 0, counts ? 1 : 0);
            work();
        });
    } catch (const kernels::Stopped&) {
        throwStopped(done);
    } catch (const Stopped&) {
        throwStopped(done);
    }
}

void LinearConvolution::run(ResultTap& tap, StepRelay& relay, Findings& /*findings*/,
                            RunRecord& record) {
    const SignalInfo info = signal->info();
    const bool stream = comesAlong();
    const auto deliver = [&](const double* interleaved, std::int64_t samples) {
        pass(tap, interleaved, samples);
    };
    BlockRounds rounds(*signal, kernels, room, width);
    for (std::int64_t done = 0; rounds.read();) {
        for (std::int64_t i = 0; i < rounds.blocks(); ++i, ++done) {
            if (!relay.before(stream ? 0 : done, 0)) {
                throwStopped(done);
            }
            if (i == 0) {
                convolve(rounds, relay, done);
            }
            rounds.deliver(i, deliver);
        }
        if (stream) {
            tap.flush();
        }
    }
    if (rounds.samples() < info.samples) {
        throw Failure(
            fmt::format("{} ended early: it has changed since it was opened", info.source.shown));
    }
    rounds.finish(deliver);
    tap.take(turned.data(), place.turned);
    describeLengths(record, rounds.samples());
}
