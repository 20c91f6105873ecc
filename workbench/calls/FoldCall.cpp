#include "workbench/calls/FoldCall.h"

#include "workbench/module/ModuleLibrary.h"
#include "workbench/signals/SampleDigest.h"
#include "workbench/terminal/FoldOptions.h"
#include "workbench/terminal/JobsOption.h"

#include <utility>

static const char* commandOf(std::int32_t direction) {
    return direction == FendraSettings::convolution ? "convolve" : "deconvolve";
}

FoldCall::FoldCall(std::shared_ptr<const ModuleLibrary> moduleLibrary, std::int32_t direction,
                   const CallOptions& given)
    : library(std::move(moduleLibrary)) {
    const auto read = std::make_shared<FoldOptions>(commandOf(direction), direction);
    JobsOption jobs;
    readOptions(
        commandOf(direction), given,
        [&](CLI::App& command) {
            read->addWithoutFilesTo(command);
            jobs.addTo(command, "channels and blocks");
        },
        [&] { prepared = read->job(*library); });
    prepared.threads = jobs.threads;
    prepared.treatment.uncertainty |= prepared.treatment.automatic;
    options = read;
}

FoldCall::~FoldCall() = default;

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
bool FoldCall::judgesLater(const CallSignal& signal, const CallSignal& kernel) const {
    constexpr std::int64_t longest = 65536;  // values
    return signal.samples * signal.channels + kernel.samples * kernel.channels <= longest &&
           !prepared.leftToData.any() && !prepared.treatment.automatic;
}

static Outcome outcomeOf(const FoldJob& job, const ModuleLibrary& library, JobObserver& observer) {
    Outcome outcome = ::run(job, library, observer);
    if (outcome.record.stopped) {
        throw Stopped("stopped; there is no result");
    }
    outcome.record.output = outcome.result.info.source;
    return outcome;
}

CallResult FoldCall::run(const CallSignal& signal, const CallSignal& kernel,
                         JobObserver& observer) const {
    FoldJob job = prepared;
    job.first = sourceOf(signal, job.allowNonfinite);
    job.second = sourceOf(kernel, job.allowNonfinite);
    options->setWords(job, signal.name, kernel.name);
    job.judged = !judgesLater(signal, kernel);
    Outcome outcome = outcomeOf(job, *library, observer);
    CallResult result;
    take(outcome.result, outcome.record, result);
    if (job.judged) {
        result.makeRecord = [record = std::move(outcome.record)] { return record.json(); };
        return result;
    }
    job.judged = true;
    job.first = sourceOf(copyOf(signal));
    job.second = sourceOf(copyOf(kernel));
    result.makeRecord = [again = std::move(job), module = library, words = options] {
        JobObserver silent;
        return outcomeOf(again, *module, silent).record.json();
    };
    return result;
}
