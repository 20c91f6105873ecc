#include "workbench/calls/CompareCall.h"

#include "workbench/module/ModuleLibrary.h"
#include "workbench/terminal/CompareOptions.h"
#include "workbench/terminal/JobsOption.h"
#include "workbench/terminal/comparisonText.h"

#include <utility>

CompareCall::CompareCall(std::shared_ptr<const ModuleLibrary> moduleLibrary,
                         const CallOptions& given)
    : library(std::move(moduleLibrary)) {
    CompareOptions options;
    JobsOption jobs;
    readOptions(
        "compare", given,
        [&](CLI::App& command) {
            options.addWithoutFilesTo(command);
            jobs.addTo(command, "methods");
        },
        [&] { prepared = options.job(); });
    prepared.threads = jobs.threads;
}

std::vector<MethodOutcome> CompareCall::run(const CallSignal& signal, const CallSignal& kernel,
                                            const CallSignal* truth, JobObserver& observer) const {
    CompareJob job = prepared;
    const auto whole = [&](const CallSignal& given) {
        return std::make_shared<const Signal>(
            Signal::of(*sourceOf(given, job.allowNonfinite).open()));
    };
    job.signal = whole(signal);
    job.kernel = whole(kernel);
    if (truth != nullptr) {
        job.truth = sourceOf(whole(*truth));
    }
    return ::run(job, *library, observer);
}

std::string tableOf(const std::vector<MethodOutcome>& outcomes, bool withTruth) {
    return comparisonTable(outcomes, withTruth);
}

std::string recordOf(const std::vector<MethodOutcome>& outcomes) {
    return comparisonJson(outcomes);
}
