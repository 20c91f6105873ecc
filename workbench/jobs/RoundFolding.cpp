#include "workbench/jobs/RoundFolding.h"

#include "host/B_BasisModule.h"
#include "workbench/jobs/Findings.h"
#include "workbench/jobs/ResultTap.h"
#include "workbench/jobs/StepRelay.h"
#include "workbench/jobs/jobSize.h"
#include "workbench/messages/Failure.h"
#include "workbench/methods/Method.h"
#include "workbench/module/FendraModule.h"
#include "workbench/signals/Signal.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <utility>

// The lag is room that a padded convolution needs, or its last sample would wrap round to the
// front.
static RunPlan planOf(const FoldJob& job, const Method& method) {
    RunPlan plan;
    plan.blockLength = job.cutting.block;
    plan.packet = job.settings.executionMode == FendraSettings::perPacket;
    plan.pad = job.cutting.pad;
    plan.divides = method.direction == FendraSettings::deconvolution;
    plan.lag = plan.divides ? 0 : method.lag;
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
      module(library.makeModule()) {
    place.axis = first->info().axis;
    const bool wraps = used.direction == FendraSettings::convolution && !job.cutting.pad;
    if (!whole && wraps && !job.cutting.circular) {
        refuseWrapping(job.cutting, first->info(), second->info());
    }
    if (!whole) {
        refuseForBlocks(job);
    } else if (job.treatment.origin.kind != Origin::Kind::none) {
        place = placeOfWhole();
    }
    applySettings(job.settings, *module);
    driven.emplace(*module, *first, *second, planOf(job, used));
    checkMemory(used, driven->resultLength(0));
}

ConvolutionPlace RoundFolding::placeOfWhole() {
    const bool firstIsKernel = first->info().samples < second->info().samples;
    std::unique_ptr<SignalReader>& kernel = firstIsKernel ? first : second;
    const KernelZero zero = kernelZeroOf(kernel, job.treatment.origin);
    return {(firstIsKernel ? second : first)->info().axis, zero, false, used.lag};
}

JobSize RoundFolding::size() const {
    return sizeOf(used, job.settings, *driven);
}

void RoundFolding::describe(RunRecord& record) const {
    record.settings = job.settings;
    record.channels = driven->channels();
    record.samples = driven->samples();
    record.rounds = driven->rounds();
    record.moved = place.movement;
}

std::vector<double> RoundFolding::placed(const double* interleaved, std::int64_t samples) const {
    const std::int64_t width = driven->channels();
    std::vector<double> result(interleaved, interleaved + samples * width);
    std::rotate(result.data(), result.data() + (place.turned % samples) * width,
                result.data() + result.size());
    return result;
}

void RoundFolding::run(ResultTap& tap, StepRelay& relay, Findings& findings, RunRecord& record) {
    const auto deliver = [&](const double* values, std::int64_t samples) {
        if (place.movement) {
            tap.take(placed(values, samples).data(), samples);
        } else {
            tap.take(values, samples);
        }
    };
    try {
        driven->drive(
            {[&](std::int64_t round, int channel) { return relay.before(round, channel); },
             [&](const ModuleRun::Channel& channel) { findings.add(channel); }, deliver});
    } catch (const ModuleRun::Stopped& stopped) {
        throw Failure(fmt::format("stopped after {} of {} blocks; nothing is written",
                                  stopped.rounds, driven->rounds()));
    }
    record.numberNames = driven->numberNames();
    record.numbers = driven->numbers();
}
