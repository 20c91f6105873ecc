#include "workbench/jobs/CompareJob.h"

#include "kernels/WorkWatch.h"
#include "workbench/jobs/JoinedJobs.h"
#include "workbench/jobs/predictedSignal.h"
#include "workbench/messages/Failure.h"
#include "workbench/methods/Method.h"
#include "workbench/module/ModuleLibrary.h"
#include "workbench/system/inParallel.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

// Root of the summed squares of x - y, over that of y. The shorter has zeros behind it; a y of one
// channel serves every channel of x.
static double distance(const Signal& x, const Signal& y) {
    const auto width = static_cast<std::size_t>(x.info.channels);
    const auto knownWidth = static_cast<std::size_t>(y.info.channels);
    const auto samples = static_cast<std::size_t>(std::max(x.info.samples, y.info.samples));
    double differences = 0.0, squares = 0.0;
    for (std::size_t i = 0; i < samples * width; ++i) {
        const std::size_t place = knownWidth == 1 ? i / width : i;
        const double value = i < x.interleaved.size() ? x.interleaved[i] : 0.0;
        const double known = place < y.interleaved.size() ? y.interleaved[place] : 0.0;
        differences += (value - known) * (value - known);
        squares += known * known;
    }
    return squares == 0.0 ? 0.0 : std::sqrt(differences / squares);
}

static double roughnessOf(const Signal& signal) {
    const std::vector<double>& x = signal.interleaved;
    const auto width = static_cast<std::size_t>(signal.info.channels);
    double differences = 0.0, squares = 0.0;
    for (std::size_t i = 0; i < x.size(); ++i) {
        squares += x[i] * x[i];
        if (i >= width) {
            differences += (x[i] - x[i - width]) * (x[i] - x[i - width]);
        }
    }
    return squares == 0.0 ? 0.0 : std::sqrt(differences / squares);
}

static double misfitOf(const CompareJob& job, const MethodOutcome& outcome) {
    Signal model = outcome.result;
    const auto width = static_cast<std::size_t>(model.info.channels);
    for (std::size_t c = 0; c < width; ++c) {
        const int channel = static_cast<int>(c);
        const std::vector<double> samples = predictedSignal(
            channelOf(outcome.result, channel), channelOf(*job.kernel, channel), outcome.record);
        for (std::size_t i = 0; i < samples.size(); ++i) {
            model.interleaved[i * width + c] = samples[i];
        }
    }
    return distance(model, *job.signal);
}

// The part of a treatment that a method has.
static Treatment treatmentOf(const CompareJob& job, const Method& method) {
    Treatment treatment = job.treatment;
    if (method.code != FendraSettings::vanCittert) {
        treatment.oversampling = 1;
    }
    if (method.code != FendraSettings::regularized) {
        treatment.strength.reset();
        treatment.frequencies.reset();
    }
    return treatment;
}

[[noreturn]] static void throwStopped() {
    throw Stopped("stopped before all methods had a result; nothing is written");
}

// A method that fails takes its place in the comparison with its reason.
static MethodOutcome runMethod(const CompareJob& job, const Method& method,
                               const ModuleLibrary& library, JobObserver& observer) {
    MethodOutcome compared;
    compared.method = &method;
    FoldJob deconvolution;
    deconvolution.first = sourceOf(job.signal);
    deconvolution.second = sourceOf(job.kernel);
    deconvolution.settings = job.settings;
    deconvolution.cutting.pad = job.pad;
    deconvolution.treatment = treatmentOf(job, method);
    deconvolution.rate = job.rate;
    deconvolution.truth = job.truth;
    deconvolution.allowNonfinite = job.allowNonfinite;
    deconvolution.threads = std::max(1, job.threads / static_cast<int>(job.methods.size()));
    deconvolution.settings.direction = method.direction;
    deconvolution.settings.method = method.code;
    if (method.code == FendraSettings::vanCittert) {
        deconvolution.leftToData = job.leftToData;
    }
    try {
        Outcome outcome = run(deconvolution, library, observer);
        const kernels::WorkWatch::Question goesOn = [&](double /*share*/) {
            return observer.advances({.share = 1.0});
        };
        const kernels::WorkWatch judging(goesOn);
        compared.record = std::move(outcome.record);
        compared.result = std::move(outcome.result);
        compared.misfit = misfitOf(job, compared);
        compared.roughness = roughnessOf(compared.result);
    } catch (const kernels::Stopped&) {
        throwStopped();
    } catch (const Failure& failure) {
        compared.failure = failure.what();
    }
    return compared;
}

std::vector<MethodOutcome> run(const CompareJob& job, const ModuleLibrary& library,
                               JobObserver& observer) {
    std::vector<MethodOutcome> outcomes(job.methods.size());
    JoinedJobs joined(observer, outcomes.size());
    inParallel(job.threads, std::ssize(outcomes), [&](std::int64_t index) {
        const auto i = static_cast<std::size_t>(index);
        JoinedJobs::One part(joined, i);
        outcomes[i] = runMethod(job, *job.methods[i], library, part);
    });
    if (joined.stopped()) {
        throwStopped();
    }
    return outcomes;
}

void writeResults(const std::vector<MethodOutcome>& outcomes, const SignalTarget& target) {
    ResultInfo file{0, 0, 0.0, {}, {}, {}};
    for (const MethodOutcome& outcome : outcomes) {
        const SignalInfo& info = outcome.result.info;
        for (int c = 0; c < info.channels && outcome.failure.empty(); ++c) {
            file.columnNames.push_back(info.channels == 1
                                           ? outcome.method->word
                                           : fmt::format("{}_{}", outcome.method->word, c + 1));
            file.samples = info.samples;
            file.rate = info.rate;
            file.axis = info.axis;
        }
    }
    file.channels = static_cast<int>(file.columnNames.size());
    if (file.columnNames.empty()) {
        throw Failure("no method gave a result; there is nothing to write");
    }
    std::vector<double> interleaved;
    for (std::int64_t i = 0; i < file.samples; ++i) {
        for (const MethodOutcome& outcome : outcomes) {
            const std::int64_t channels =
                outcome.failure.empty() ? outcome.result.info.channels : 0;
            const double* const first = outcome.result.interleaved.data() + i * channels;
            interleaved.insert(interleaved.end(), first, first + channels);
        }
    }
    const auto writer = createSignal(target, file);
    writer->write(interleaved.data(), file.samples);
    writer->finish({});
}
