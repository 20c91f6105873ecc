#include "workbench/jobs/RoundFolding.h"

#include "workbench/jobs/ChannelRelay.h"
#include "workbench/jobs/Findings.h"
#include "workbench/jobs/ResultTap.h"
#include "workbench/jobs/jobSize.h"
#include "workbench/messages/Failure.h"
#include "workbench/methods/Method.h"
#include "workbench/signals/Signal.h"
#include "workbench/system/inRounds.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <utility>

static RunPlan planOf(const FoldJob& job, const Method& method) {
    RunPlan plan;
    plan.blockLength = job.cutting.block;
    plan.packet = job.settings.executionMode == FendraSettings::perPacket;
    plan.pad = job.cutting.pad;
    plan.divides = method.direction == FendraSettings::deconvolution;
    plan.equalLengths = method.equalLengths;
    return plan;
}

// A block that is convolved by itself wraps round: joined, such blocks are not the filtered signal.
[[noreturn]] static void refuseWrapping(const Cutting& cutting, const SignalInfo& a,
                                        const SignalInfo& b) {
    const SignalInfo& longer = a.samples < b.samples ? b : a;
    throw Failure(fmt::format(
        "{} would be cut into {} blocks, each of which wraps round by itself; filter a signal of "
        "any length with --pad, or give --circular for such blocks",
        longer.source.shown, (longer.samples - 1) / cutting.block + 1));
}

static void refuseForBlocks(const FoldJob& job) {
    const Treatment& treatment = job.treatment;
    const bool moves = treatment.origin.kind != Origin::Kind::automatic &&
                       treatment.origin.kind != Origin::Kind::none;
    const bool prepares = treatment.automatic || treatment.ends || treatment.oversampling != 1 ||
                          treatment.uncertainty || treatment.keep || job.curve ||
                          job.settings.method == FendraSettings::regularized ||
                          job.leftToData.any();
    if (moves || prepares) {
        throw Failure(fmt::format(
            "{} whole signals, and these are cut into several blocks; leave out --block, or join "
            "them with --per packet",
            moves ? "a kernel's zero moves" : "settings are chosen from"));
    }
}

// A zero that no sample has to tell costs no memory. The kernel is the shorter signal, at equal
// lengths the second.
static KernelZero kernelZeroOf(std::unique_ptr<SignalReader>& kernel, const Origin& origin) {
    Signal samples{kernel->info(), {}};
    const bool asksSamples =
        origin.kind == Origin::Kind::maximum || (!samples.info.axis && samples.info.rate == 0.0);
    if (asksSamples) {
        samples = Signal::of(*kernel);
        kernel = sourceOf(std::make_shared<const Signal>(samples)).open();
    }
    return zeroOf(samples, origin);
}

RoundFolding::RoundFolding(const FoldJob& foldJob, const ModuleLibrary& library,
                           std::unique_ptr<SignalReader> firstReader,
                           std::unique_ptr<SignalReader> secondReader, bool whole)
    : job(foldJob),
      used(*Method::selectedBy(job.settings)),
      first(std::move(firstReader)),
      second(std::move(secondReader)),
      drivers(library, job.settings) {
    place.axis = first->info().axis;
    const bool convolves = used.direction == FendraSettings::convolution;
    if (!whole && convolves && !job.cutting.circular) {
        refuseWrapping(job.cutting, first->info(), second->info());
    }
    if (!whole) {
        refuseForBlocks(job);
    } else if (job.treatment.origin.kind != Origin::Kind::none) {
        place = placeOfWhole();
    }
    driven.emplace(*first, *second, planOf(job, used));
    const std::int64_t length = driven->resultLength(0);
    checkMemory(used, length, 2.0 * driven->channels() * static_cast<double>(length));
    threads = threadsThatFit();
}

// A thread has the operands and the result of a channel in the module and, beside the module, those
// of all channels of a round, where several rounds are under way.
int RoundFolding::threadsThatFit() const {
    const std::int64_t channels = driven->channels();
    const auto length = static_cast<double>(driven->resultLength(0));
    const auto shorter = static_cast<double>(driven->shorterLength(0));
    const double arrays = 3.0 * (driven->rounds() == 1 ? 1.0 : 1.0 + static_cast<double>(channels));
    return threadsFor(job.threads, used,
                      {sizeOfRun(used, job.settings, length, shorter), driven->rounds() * channels,
                       driven->resultLength(0), arrays * length});
}

ConvolutionPlace RoundFolding::placeOfWhole() {
    const bool firstIsKernel = first->info().samples < second->info().samples;
    std::unique_ptr<SignalReader>& kernel = firstIsKernel ? first : second;
    const KernelZero zero = kernelZeroOf(kernel, job.treatment.origin);
    return {(firstIsKernel ? second : first)->info().axis, zero, false, used.lag};
}

JobSize RoundFolding::size() const {
    return sizeOf(used, job.settings, *driven, threads);
}

void RoundFolding::describe(RunRecord& record) const {
    record.settings = job.settings;
    record.channels = driven->channels();
    record.samples = driven->samples();
    record.rounds = driven->rounds();
    record.moved = place.movement;
}

void RoundFolding::runChannel(ModuleRun::Round& round, int channel, StepRelay& relay) {
    ChannelRelay watch(relay, round.number);
    const auto throwStopped = [&] {
        throw Stopped(fmt::format("stopped after {} of {} blocks; nothing is written", round.number,
                                  driven->rounds()));
    };
    if (!watch.before()) {
        throwStopped();
    }
    try {
        drivers.use([&](ModuleDriver& driver) {
            round.answers[static_cast<std::size_t>(channel)] =
                driven->answer(driver, round, channel);
        });
    } catch (const Stopped&) {
        throwStopped();
    }
}

void RoundFolding::deliver(const ModuleRun::Round& round, ResultTap& tap) const {
    std::vector<double> interleaved = driven->delivered(round);
    const std::int64_t width = driven->channels(), samples = std::ssize(interleaved) / width;
    std::rotate(interleaved.data(), interleaved.data() + (place.turned % samples) * width,
                interleaved.data() + interleaved.size());
    tap.take(interleaved.data(), samples);
}

void RoundFolding::run(ResultTap& tap, StepRelay& relay, Findings& findings, RunRecord& record) {
    RoundData<ModuleRun::Round> rounds(threads);
    const auto begin = [&](std::int64_t number) { rounds[number] = driven->next(); };
    const auto runPart = [&](std::int64_t number, int channel) {
        runChannel(rounds[number], channel, relay);
    };
    const auto end = [&](std::int64_t number) {
        const ModuleRun::Round round = std::move(rounds[number]);
        for (int c = 0; c < driven->channels(); ++c) {
            const ModuleRun::Channel channel = ModuleRun::channelOf(round, c);
            findings.add(channel);
            if (!channel.numbers.empty()) {
                record.numbers.push_back({number, c, channel.numbers});
            }
        }
        deliver(round, tap);
    };
    record.numberNames = drivers.numberNames();
    inRounds(threads, driven->rounds(), driven->channels(), {begin, runPart, end});
}
