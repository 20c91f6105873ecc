#include "workbench/jobs/FoldJob.h"

#include "host/B_BasisModule.h"
#include "kernels/WorkWatch.h"
#include "workbench/jobs/CommonStep.h"
#include "workbench/jobs/Comparison.h"
#include "workbench/jobs/Findings.h"
#include "workbench/jobs/LinearConvolution.h"
#include "workbench/jobs/ResultTap.h"
#include "workbench/jobs/RoundFolding.h"
#include "workbench/jobs/StepRelay.h"
#include "workbench/jobs/WholeDeconvolution.h"
#include "workbench/jobs/jobSize.h"
#include "workbench/messages/Failure.h"
#include "workbench/methods/Method.h"
#include "workbench/methods/Setting.h"
#include "workbench/module/FendraModule.h"
#include "workbench/module/ModuleLibrary.h"
#include "workbench/system/fileNames.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

// Makes the writer of a result, when it is known what the result will be like.
using MakeWriter = std::function<std::unique_ptr<SignalWriter>(const ResultInfo& info)>;

// The command line offers nothing that a run refuses; a stored graph, or a program that makes a
// job, may hold it.
static const Method& methodOf(const FoldJob& job) {
    std::string refused = refusedSetting(job.settings);
    const Method* const method = Method::selectedBy(job.settings);
    if (refused.empty() && !job.graph.empty() && !method->ofModule()) {
        refused = Setting::named("method").text(job.settings) + ", which is not on offer";
    }
    if (!refused.empty()) {
        throw Failure(fmt::format("{}holds {}; choose another value{}",
                                  job.graph.empty() ? "the job " : job.graph + " ", refused,
                                  job.graph.empty() ? "" : " with fendra settings"));
    }
    return *method;
}

// Whether a signal is one block.
static bool isWhole(const FoldJob& job, const SignalInfo& info) {
    return job.cutting.block == 0 || job.settings.executionMode == FendraSettings::perPacket ||
           info.samples <= job.cutting.block;
}

namespace {

// A job under way.
class FoldRun {
public:
    // Everything that can be refused is refused here, before a file is made for the result.
    // intoStream: the result can be written before its length is known.
    FoldRun(const FoldJob& foldJob, const ModuleLibrary& moduleLibrary, JobObserver& jobObserver,
            bool intoStream);

    RunRecord run(const MakeWriter& makeWriter);

private:
    void describe(const SignalInfo& a, const SignalInfo& b);
    [[nodiscard]] ResultInfo resultInfo() const;
    void judge(const Findings& findings);

    const FoldJob& job;
    const ModuleLibrary& library;
    JobObserver& observer;
    std::unique_ptr<Folding> folding;
    bool kernelServesAll = true;
    CommonStep common;
    std::optional<Comparison> comparison;
    RunRecord record;
};

}  // namespace

static std::unique_ptr<SignalReader> opened(const SignalSource& source, bool asStream) {
    return asStream && source.openStream ? source.openStream() : source.open();
}

static Signal wholeOf(SignalReader& reader) {
    Signal signal = Signal::of(reader);
    kernels::WorkWatch::passed(4.0 * kernels::WorkWatch::element *
                               static_cast<double>(signal.interleaved.size()));
    return signal;
}

static SignalInfo described(const SignalReader& reader, const SignalSource& source) {
    SignalInfo info = reader.info();
    info.sha256 = source.sha256.empty() ? info.sha256 : source.sha256;
    return info;
}

static void refusePartialOfSeveral(const FoldJob& job, const SignalInfo& info) {
    if (job.keepPartial && info.channels > 1) {
        throw Failure(fmt::format(
            "--keep-partial: {} has {} channels, whose iterations would be stopped after different "
            "steps; deconvolve one at a time, of text as FILE:COLUMN, or leave out --keep-partial",
            info.source.shown, info.channels));
    }
}

FoldRun::FoldRun(const FoldJob& foldJob, const ModuleLibrary& moduleLibrary,
                 JobObserver& jobObserver, bool intoStream)
    : job(foldJob), library(moduleLibrary), observer(jobObserver) {
    const kernels::WorkWatch::Question goesOn = [this](double /*share*/) {
        return observer.advances({});
    };
    const kernels::WorkWatch choosing(goesOn);
    requireFendra(library);
    const Method& method = methodOf(job);
    const bool streams = intoStream && LinearConvolution::does(job);
    std::unique_ptr<SignalReader> first = opened(job.first, streams);
    std::unique_ptr<SignalReader> second =
        opened(job.second, streams && first->info().samples != 0);
    const SignalInfo a = described(*first, job.first), b = described(*second, job.second);
    refusePartialOfSeveral(job, a.channels > b.channels ? a : b);
    common = commonStep(a, b, job.rate);
    const bool whole = isWhole(job, a) && isWhole(job, b);
    kernelServesAll = isWhole(job, b);
    record.rate = common.rate;
    if (whole && method.direction == FendraSettings::deconvolution) {
        checkWholeMemory(method, a, b, job.cutting.pad);
        Signal measured = wholeOf(*first), kernel = wholeOf(*second);
        measured.info.rate = common.rate;
        folding = std::make_unique<WholeDeconvolution>(job, library, std::move(measured),
                                                       std::move(kernel), observer);
    } else if (LinearConvolution::does(job)) {
        folding =
            std::make_unique<LinearConvolution>(job, library, std::move(first), std::move(second));
    } else {
        folding = std::make_unique<RoundFolding>(job, library, std::move(first), std::move(second),
                                                 whole);
    }
    record.module = library.identity().name;
    record.moduleVersion = library.identity().version;
    record.moduleFile = nameOf(library.file);
    describe(a, b);
    if (job.truth) {
        comparison.emplace(*job.truth, record.channels);
    }
}

void FoldRun::describe(const SignalInfo& a, const SignalInfo& b) {
    record.words = job.words;
    record.block = job.cutting.block;
    record.pad = job.cutting.pad;
    record.graph = job.graph;
    record.inputs = {a, b};
    folding->describe(record);
}

// The axis has the step of both signals, unless a rate takes its place. The names are those of the
// signal whose channels the result has. The labels are the first signal's; the place of a
// loudspeaker is known where its channels are those of the result. With a band each channel has
// three columns.
ResultInfo FoldRun::resultInfo() const {
    const SignalInfo &a = record.inputs[0], &b = record.inputs[1];
    std::optional<SignalAxis> axis = folding->axis();
    if (axis && axis->time != (common.rate > 0.0)) {
        axis.reset();
    } else if (axis) {
        axis->step = common.step;
        axis->lowestStep = axis->highestStep = std::abs(common.step);
    }
    ResultInfo info{record.channels,
                    record.samples,
                    record.rate,
                    axis,
                    a.channels == record.channels ? a.names : b.names,
                    record.openingNotes(),
                    a.labels};
    if (a.channels != record.channels) {
        info.labels.speakers.clear();
    }
    if (folding->hasBand()) {
        std::vector<std::string> columns;
        for (int c = 0; c < record.channels; ++c) {
            const std::string suffix = record.channels == 1 ? "" : fmt::format("_{}", c + 1);
            for (const char* name : {"value", "lower", "upper"}) {
                columns.push_back(name + suffix);
            }
        }
        info.channels = static_cast<int>(columns.size());
        info.columnNames = columns;
    }
    return info;
}

// The writer takes its place on disk last of all: whatever fails before leaves nothing behind.
RunRecord FoldRun::run(const MakeWriter& makeWriter) {
    const std::unique_ptr<SignalWriter> writer = makeWriter(resultInfo());
    Findings findings(
        folding->method(), record.settings,
        {record.rounds, record.channels, record.inputs[1].channels, kernelServesAll, job.judged});
    const JobSize size = folding->size();
    StepRelay relay(observer, size.rounds, record.channels, folding->passes());
    observer.begins(size);
    ResultTap tap(*writer, comparison ? &*comparison : nullptr, record.channels,
                  {job.gain, job.allowNonfinite, job.judged, folding->method().onOverflow});
    folding->run(tap, relay, findings, record);
    tap.finish();
    record.stopped = relay.stopped();
    tap.describe(record);
    judge(findings);
    writer->finish(record.closingNotes());
    return record;
}

// All zeros are no answer, except to zeros, and where the start of the iteration was asked for.
void FoldRun::judge(const Findings& findings) {
    for (const SignalInfo& input : record.inputs) {
        for (const std::string& remark : input.remarks) {  // it may be the same file twice
            if (std::count(record.remarks.begin(), record.remarks.end(), remark) == 0) {
                record.remarks.push_back(remark);
            }
        }
    }
    for (std::string& remark : findings.remarks()) {
        record.remarks.push_back(std::move(remark));
    }
    if (record.error && record.error->shift != 0) {
        record.remarks.push_back(fmt::format(
            "moved by {} more sample{} to {} ones, the result would be off by {:.2g} only: see "
            "--origin",
            std::abs(record.error->shift), std::abs(record.error->shift) == 1 ? "" : "s",
            record.error->shift > 0 ? "later" : "earlier", record.error->shiftedError));
    }
    const FendraSettings& settings = record.settings;
    const bool zero = record.minimum == 0.0 && record.maximum == 0.0 && findings.sawSignal();
    const bool iterates = folding->method().code == FendraSettings::vanCittert;
    const bool asked = record.stopped || (iterates && settings.maxIterations == 1);
    if (zero && !asked) {
        const bool atOnce = iterates && std::all_of(record.numbers.begin(), record.numbers.end(),
                                                    [](const ReportedNumbers& reported) {
                                                        return reported.values.at(1) == 1.0;
                                                    });
        throw Failure(
            atOnce ? "the first step of the iteration raised the error, and the result is all "
                     "zero: --convergence auto suits the steps to the kernel, or try --auto"
                   : "the result is all zero, and the signal is not: its values leave the range "
                     "of numbers; scale the signals");
    }
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
        signal.info.labels = info.labels;
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

// Writes a result, and collects it.
class CopyingWriter final : public SignalWriter {
public:
    CopyingWriter(std::unique_ptr<SignalWriter> target, Signal& copy, const ResultInfo& info)
        : writer(std::move(target)), collector(copy, info) {}

    void write(const double* interleaved, std::int64_t count) override {
        writer->write(interleaved, count);
        collector.write(interleaved, count);
    }
    void flush() override { writer->flush(); }
    void finish(const std::vector<std::string>& closingNotes) override {
        writer->finish(closingNotes);
    }

private:
    std::unique_ptr<SignalWriter> writer;
    MemoryWriter collector;
};

}  // namespace

// Work that is stopped outside the module: what is left to the data was being chosen, or a result
// was being judged.
static RunRecord runJob(const FoldJob& job, const ModuleLibrary& library, JobObserver& observer,
                        bool intoStream, const MakeWriter& makeWriter) {
    try {
        return FoldRun(job, library, observer, intoStream).run(makeWriter);
    } catch (const kernels::Stopped&) {
        throw Stopped("stopped before there was a result; nothing is written");
    }
}

Outcome run(const FoldJob& job, const ModuleLibrary& library, JobObserver& observer) {
    Outcome outcome;
    outcome.record = runJob(job, library, observer, false, [&](const ResultInfo& info) {
        return std::make_unique<MemoryWriter>(outcome.result, info);
    });
    return outcome;
}

// Sound beyond full scale is clipped by whatever plays it. With one digit after the point, rounded
// down, the gain that is named is enough.
static void remarkOnFullScale(RunRecord& record) {
    if (record.beyondFullScale == 0) {
        return;
    }
    const double excess = decibelsOf(std::max(record.maximum, -record.minimum));
    const double enough = (record.gain ? record.gain->decibels : 0.0) - excess;
    record.remarks.push_back(fmt::format(
        "{} sample{} beyond full scale, by up to {:.3g} dB: whatever plays the result clips {}; "
        "--gain {:.1f} or --gain normalize takes all of it to full scale or below",
        record.beyondFullScale, record.beyondFullScale == 1 ? " is" : "s are", excess,
        record.beyondFullScale == 1 ? "it" : "them", std::floor(enough * 10.0) / 10.0));
}

RunRecord run(const FoldJob& job, const ModuleLibrary& library, const SignalTarget& target,
              JobObserver& observer, Signal* copy) {
    if (job.treatment.uncertainty && !holdsColumns(target.name)) {
        throw Failure(
            fmt::format("{}: the bounds of --uncertainty are columns, which sound does not hold; "
                        "write text, as "
                        "with -o FILE.csv, or leave --uncertainty out",
                        target.name.shown));
    }
    const bool intoStream = holdsColumns(target.name);
    std::string lost;
    RunRecord record = runJob(job, library, observer, intoStream, [&](const ResultInfo& info) {
        lost = withoutPlace(target, info);
        std::unique_ptr<SignalWriter> writer = createSignal(target, info);
        return copy == nullptr ? std::move(writer)
                               : std::make_unique<CopyingWriter>(std::move(writer), *copy, info);
    });
    record.output = target.name;
    if (!lost.empty()) {
        record.remarks.push_back(fmt::format("{} has no place for {}", target.name.shown, lost));
    }
    if (!intoStream) {
        remarkOnFullScale(record);
    }
    return record;
}
