#include "workbench/jobs/FoldJob.h"

#include "host/B_BasisModule.h"
#include "workbench/jobs/Comparison.h"
#include "workbench/jobs/DataChoice.h"
#include "workbench/jobs/Findings.h"
#include "workbench/jobs/StepRelay.h"
#include "workbench/jobs/jobSize.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/methods/Method.h"
#include "workbench/methods/Setting.h"
#include "workbench/module/FendraModule.h"
#include "workbench/module/ModuleLibrary.h"
#include "workbench/module/ModuleRun.h"
#include "workbench/signals/SampleDigest.h"
#include "workbench/system/fileNames.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <memory>
#include <utility>

// Makes the writer of a result, when it is known what the result will be like.
using MakeWriter = std::function<std::unique_ptr<SignalWriter>(const ResultInfo& info)>;

// The command line offers nothing that a run refuses; a stored graph, or a program that makes a
// job, may hold it.
static const Method& methodOf(const FoldJob& job) {
    const std::string refused = refusedSetting(job.settings);
    const Method* const method = Method::selectedBy(job.settings);
    if (!refused.empty() || method == nullptr) {
        throw Failure(fmt::format("{}holds {}; choose another value{}",
                                  job.graph.empty() ? "the job " : job.graph + " ", refused,
                                  job.graph.empty() ? "" : " with fendra settings"));
    }
    return *method;
}

// The lag is room that a padded convolution needs, or its last sample would wrap round to the
// front. Deconvolutions are as long as their signal.
static RunPlan planOf(const FoldJob& job, const Method& method) {
    RunPlan plan;
    plan.blockLength = job.cutting.block;
    plan.packet = job.settings.executionMode == FendraSettings::perPacket;
    if (job.cutting.pad) {
        plan.padding = method.equalLengths ? RunPlan::Padding::equal : RunPlan::Padding::linear;
    }
    plan.divides = method.direction == FendraSettings::deconvolution;
    plan.lag = plan.divides ? 0 : method.lag;
    plan.equalLengths = method.equalLengths;
    return plan;
}

// The rate of both signals; rates that differ by no more than rounded time columns do are one.
static double commonRate(const SignalInfo& a, const SignalInfo& b, double given) {
    const double known = a.rate > 0.0 ? a.rate : b.rate;
    const auto differ = [](double x, double y) {
        return x > 0.0 && y > 0.0 && std::abs(x - y) > 1e-6 * std::max(x, y);
    };
    if (differ(a.rate, b.rate)) {
        throw Failure(
            fmt::format("{} is sampled at {} Hz and {} at {} Hz; resample one of them first",
                        a.source.shown, a.rate, b.source.shown, b.rate));
    }
    if (differ(known, given)) {
        throw Failure(fmt::format("--rate {} contradicts {} Hz in {}; leave it out", given, known,
                                  a.rate > 0.0 ? a.source.shown : b.source.shown));
    }
    return known > 0.0 ? known : given;
}

// A choice reads the signals before the module does, and standard input can be read once.
static FoldJob readableTwice(FoldJob job) {
    for (SignalSource* source : {&job.first, &job.second}) {
        if (job.leftToData.any()) {
            *source = sourceOf(std::make_shared<const Signal>(Signal::of(*source->open())));
        }
    }
    return job;
}

namespace {

// A job under way: what it was given, opened, and what becomes of it.
class FoldRun {
public:
    // Everything that can be refused is refused here, before a file is made for the result.
    FoldRun(const FoldJob& foldJob, const ModuleLibrary& library)
        : job(readableTwice(foldJob)),
          first(job.first.open()),
          second(job.second.open()),
          module(library.makeModule()),
          method(methodOf(job)) {
        applySettings(job.settings, *module);
        driven.emplace(*module, *first, *second, planOf(job, method));
        checkMemory(method, *driven);
        if (job.leftToData.any()) {
            choice.emplace(job, *driven);
            job.settings = choice->settings();
            applySettings(job.settings, *module);
        }
        describe(library);
        if (job.truth) {
            comparison.emplace(*job.truth, record.channels);
        }
    }

    RunRecord run(const MakeWriter& makeWriter, JobObserver& observer);

private:
    void describe(const ModuleLibrary& library);
    [[nodiscard]] ResultInfo resultInfo() const;
    void take(SignalWriter& writer, const double* interleaved, std::int64_t samples);
    void refuseNonfinite(const double* interleaved, std::int64_t samples) const;

    FoldJob job;  // with the settings found
    std::unique_ptr<SignalReader> first, second;
    ModuleObject module;
    const Method& method;
    std::optional<ModuleRun> driven;
    std::optional<DataChoice> choice;
    std::optional<Comparison> comparison;
    SampleDigest digest;
    std::int64_t taken = 0;  // samples of each channel
    RunRecord record;
};

}  // namespace

void FoldRun::describe(const ModuleLibrary& library) {
    const SignalInfo &a = first->info(), &b = second->info();
    record.words = job.words;
    record.settings = job.settings;
    record.block = job.cutting.block;
    record.pad = job.cutting.pad;
    record.graph = job.graph;
    record.module = moduleName(*module);
    record.moduleVersion = moduleVersion(*module);
    record.moduleFile = nameOf(library.file);
    record.inputs = {a, b};
    record.channels = driven->channels();
    record.samples = driven->samples();
    record.rounds = driven->rounds();
    record.rate = commonRate(a, b, job.rate);
    if (choice) {
        record.choice = choice->record();
        record.choice->rerun = job.wordsWith ? job.wordsWith(job.settings) : "";
    }
}

// The axis is that of the first signal; the names are those of the signal whose channels the result
// has.
ResultInfo FoldRun::resultInfo() const {
    const SignalInfo &a = first->info(), &b = second->info();
    return {record.channels,
            record.samples,
            record.rate,
            a.axis,
            a.channels == record.channels ? a.names : b.names,
            record.openingNotes()};
}

// A result with NaN or infinity looks like a file that succeeded until somebody reads it.
void FoldRun::refuseNonfinite(const double* interleaved, std::int64_t samples) const {
    const double* const end = interleaved + samples * record.channels;
    const double* const odd =
        std::find_if(interleaved, end, [](double x) { return !std::isfinite(x); });
    if (odd != end) {
        const std::int64_t index = odd - interleaved;
        throw Failure(fmt::format(
            "the result is {} at sample {}{}: {}; --allow-nonfinite lets it through",
            std::isnan(*odd) ? std::abs(*odd) : *odd,  // the sign of a NaN means nothing
            taken + index / record.channels + 1,
            record.channels == 1 ? "" : fmt::format(" of channel {}", index % record.channels + 1),
            method.onOverflow));
    }
}

void FoldRun::take(SignalWriter& writer, const double* interleaved, std::int64_t samples) {
    if (!job.allowNonfinite) {
        refuseNonfinite(interleaved, samples);
    }
    const double* const end = interleaved + samples * record.channels;
    for (const double* value = interleaved; value != end; ++value) {
        record.minimum = std::min(record.minimum, *value);
        record.maximum = std::max(record.maximum, *value);
    }
    digest.add(interleaved, static_cast<std::size_t>(end - interleaved));
    if (comparison) {
        comparison->add(interleaved, samples);
    }
    writer.write(interleaved, samples);
    taken += samples;
}

// The writer takes its place on disk last of all: whatever fails before leaves nothing behind.
RunRecord FoldRun::run(const MakeWriter& makeWriter, JobObserver& observer) {
    const std::unique_ptr<SignalWriter> writer = makeWriter(resultInfo());
    Findings findings(method, job.settings, *driven);
    StepRelay relay(observer, driven->rounds(), driven->channels());
    observer.begins(sizeOf(method, job.settings, *driven));
    try {
        driven->drive(
            {[&](std::int64_t round, int channel) { return relay.before(round, channel); },
             [&](const ModuleRun::Channel& channel) { findings.add(channel); },
             [&](const double* values, std::int64_t samples) { take(*writer, values, samples); }});
    } catch (const ModuleRun::Stopped& stopped) {
        throw Failure(fmt::format("stopped after {} of {} blocks; nothing is written",
                                  stopped.rounds, record.rounds));
    }
    record.stopped = relay.stopped();
    record.numberNames = driven->numberNames();
    record.numbers = driven->numbers();
    record.remarks = findings.remarks();
    if (choice) {
        for (std::string& remark : choice->remarks(record.numbers)) {
            record.remarks.push_back(std::move(remark));
        }
    }
    record.digest = digest.hex();
    if (comparison) {
        record.error = comparison->error();
    }
    writer->finish(record.closingNotes());
    return record;
}

namespace {

// Collects a result. It has no name of its own; messages about it, read as a signal, need one.
class MemoryWriter final : public SignalWriter {
public:
    MemoryWriter(Signal& target, const ResultInfo& info) : signal(target) {
        signal.info.source = SourceName("the result");
        signal.info.channels = info.channels;
        signal.info.rate = info.rate;
        signal.info.axis = info.axis;
        signal.info.names = info.columnNames;
    }

    void write(const double* interleaved, std::int64_t count) override {
        signal.interleaved.insert(signal.interleaved.end(), interleaved,
                                  interleaved + count * signal.info.channels);
        signal.info.samples += count;
    }

    void finish(const std::vector<std::string>& /*closingNotes*/) override {}

private:
    Signal& signal;
};

}  // namespace

Outcome run(const FoldJob& job, const ModuleLibrary& library, JobObserver& observer) {
    Outcome outcome;
    outcome.record = FoldRun(job, library)
                         .run(
                             [&](const ResultInfo& info) {
                                 return std::make_unique<MemoryWriter>(outcome.result, info);
                             },
                             observer);
    return outcome;
}

RunRecord run(const FoldJob& job, const ModuleLibrary& library, const SignalTarget& target,
              JobObserver& observer) {
    FoldRun foldRun(job, library);
    RunRecord record =
        foldRun.run([&](const ResultInfo& info) { return createSignal(target, info); }, observer);
    record.output = target.name;
    return record;
}
