#include "workbench/calls/FoldCall.h"

#include "workbench/calls/FoldCallOptions.h"
#include "workbench/module/ModuleLibrary.h"

#include <utility>

struct FoldCall::Prepared {
    std::shared_ptr<const ModuleLibrary> library;
    FoldCallOptions options;
    FoldJob job;  // without signals and words

    Outcome run(const FoldJob& made, JobObserver& observer) const;
    Outcome runJudged(FoldJob made, JobObserver& observer) const;
};

FoldCall::FoldCall(std::shared_ptr<const ModuleLibrary> library, std::int32_t direction,
                   const CallOptions& given) {
    const auto read =
        std::make_shared<Prepared>(Prepared{std::move(library), FoldCallOptions(direction), {}});
    readOptions(
        commandOf(direction), given, [&](CLI::App& command) { read->options.addTo(command); },
        [&] { read->job = read->options.fold.job(*read->library); });
    read->job.threads = read->options.jobs.threads;
    read->job.treatment.uncertainty |= read->job.treatment.automatic;
    prepared = read;
}

// With bounds, three columns stand in place of each channel.
static void take(Signal& made, const RunRecord& record, CallResult& result) {
    result.channels = record.channels;
    result.samples = record.samples;
    result.rate = record.rate;
    result.axis = made.info.axis;
    if (made.info.channels == record.channels) {
        result.value = std::move(made.interleaved);
        return;
    }
    const std::size_t values = made.interleaved.size() / 3;
    result.value.resize(values);
    result.lower.resize(values);
    result.upper.resize(values);
    for (std::size_t i = 0; i < values; ++i) {
        result.value[i] = made.interleaved[3 * i];
        result.lower[i] = made.interleaved[3 * i + 1];
        result.upper[i] = made.interleaved[3 * i + 2];
    }
}

// What speaks against a result takes longer to find out than a short run itself; a search, and a
// long run, take longer than that.
static bool isJudgedLater(const FoldJob& job, const CallSignal& signal, const CallSignal& kernel) {
    constexpr std::int64_t longest = 65536;  // values
    return signal.samples * signal.channels + kernel.samples * kernel.channels <= longest &&
           !job.leftToData.any() && !job.treatment.automatic;
}

Outcome FoldCall::Prepared::run(const FoldJob& made, JobObserver& observer) const {
    Outcome outcome = ::run(made, *library, observer);
    if (outcome.record.stopped) {
        throw Stopped("stopped; there is no result");
    }
    outcome.record.output = outcome.result.info.source;
    return outcome;
}

Outcome FoldCall::Prepared::runJudged(FoldJob made, JobObserver& observer) const {
    made.judged = true;
    options.fold.setWords(made, made.first.name.path, made.second.name.path);
    return run(made, observer);
}

CallResult FoldCall::run(const CallSignal& signal, const CallSignal& kernel,
                         JobObserver& observer) const {
    FoldJob job = prepared->job;
    job.first = sourceOf(signal, job.allowNonfinite);
    job.second = sourceOf(kernel, job.allowNonfinite);
    CallResult result;
    if (!isJudgedLater(job, signal, kernel)) {
        Outcome outcome = prepared->runJudged(job, observer);
        take(outcome.result, outcome.record, result);
        result.makeRecord = [record = std::move(outcome.record)] { return record.json(); };
        return result;
    }
    job.judged = false;
    Outcome outcome = prepared->run(job, observer);
    take(outcome.result, outcome.record, result);
    result.makeRecord = [in = prepared, first = copyOf(signal), second = copyOf(kernel)] {
        FoldJob again = in->job;
        again.first = sourceOf(first);
        again.second = sourceOf(second);
        JobObserver silent;
        return in->runJudged(again, silent).record.json();
    };
    return result;
}
