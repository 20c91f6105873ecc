#include "benchmarks/quality/Laboratory.h"

#include <algorithm>
#include <cmath>
#include <limits>

static FoldJob deconvolution(const DataSet& set, const std::vector<double>& measured,
                             std::int32_t method) {
    FoldJob job;
    job.first = set.source(measured);
    job.second = set.kernelSource();
    job.settings.direction = FendraSettings::deconvolution;
    job.settings.method = method;
    return job;
}

FoldJob Laboratory::iteration(const DataSet& set, const std::vector<double>& measured) {
    FoldJob job = deconvolution(set, measured, FendraSettings::vanCittert);
    job.leftToData.convergence = job.leftToData.maxIterations = true;
    job.treatment.oversampling = 0;
    return job;
}

FoldJob Laboratory::regularized(const DataSet& set, const std::vector<double>& measured) {
    return deconvolution(set, measured, FendraSettings::regularized);
}

FoldJob Laboratory::automatic(const DataSet& set, const std::vector<double>& measured) {
    FoldJob job = iteration(set, measured);
    job.leftToData.method = job.treatment.automatic = true;
    return job;
}

FoldJob Laboratory::repeated(FoldJob job, const Answer& found) {
    job.settings = found.outcome.record.settings;
    job.treatment = found.treatment;
    job.leftToData = {};
    return job;
}

// What the rounding of sums as long as the signal adds to an error.
static double roundingOf(const Signal& signal, double error) {
    double energy = 0.0;
    for (const double sample : signal.interleaved) {
        energy += sample * sample;
    }
    const double root = static_cast<double>(signal.info.samples) *
                        std::numeric_limits<double>::epsilon() * std::sqrt(energy);
    return root * (2.0 * std::sqrt(error) + root);
}

Answer Laboratory::run(const FoldJob& job) {
    JobObserver observer;
    return run(job, observer);
}

Answer Laboratory::run(FoldJob job, JobObserver& observer) {
    Answer answer;
    answer.treatment = job.treatment;
    job.wordsWith = [&](const FendraSettings& /*found*/, const Treatment& treatment) {
        answer.treatment = treatment;
        return std::string();
    };
    answer.outcome = ::run(job, library, observer);
    const RunRecord& record = answer.outcome.record;
    if (record.choice && record.choice->predictedError) {
        const double reported = record.numbers.at(0).values.at(0);
        const double off = std::abs(*record.choice->predictedError - reported);
        const double rounding = roundingOf(Signal::of(*job.first.open()), reported);
        worst = std::max(worst, std::max(0.0, off - rounding) / reported);
        ++predicted;
    }
    return answer;
}
