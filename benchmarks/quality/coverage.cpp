#include "benchmarks/quality/disturbances.h"
#include "benchmarks/quality/sections.h"

#include <fmt/core.h>

#include <cstdint>

// Counts how many samples of a signal lie within the bounds of a result with a band.
namespace {

struct Coverage {
    void add(const std::vector<double>& rows, const std::vector<double>& signal) {
        for (std::size_t i = 0; i < signal.size(); ++i) {
            held += signal[i] >= rows[3 * i + 1] && signal[i] <= rows[3 * i + 2] ? 1 : 0;
            ++all;
        }
    }
    [[nodiscard]] double share() const { return static_cast<double>(held) / all; }

    int held = 0, all = 0;
};

using MakeJob = FoldJob (*)(const DataSet& set, const std::vector<double>& measured);

}  // namespace

static FoldJob division(const DataSet& set, const std::vector<double>& measured) {
    FoldJob job = Laboratory::regularized(set, measured);
    job.settings.method = FendraSettings::frequencyDomain;
    return job;
}

// The truth, and the truth at the result's resolution: what the same linear method makes of the
// signal without noise.
static void measure(Laboratory& laboratory, Figures& figures, const DataSet& set, MakeJob makeJob,
                    const char* method) {
    constexpr double level = 1e-2;
    const std::vector<double> blurred = set.blurred();
    Coverage ofTruth, ofResolved;
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        FoldJob job = makeJob(set, withWhiteNoise(blurred, level, seed));
        job.treatment.uncertainty = true;
        job.treatment.noise = {KnownNoise::Kind::sigma, level * rootMeanSquare(blurred), {}};
        const Answer answer = laboratory.run(job);
        FoldJob noiseless = Laboratory::repeated(makeJob(set, blurred), answer);
        noiseless.settings.abortAtMinError = 0;
        noiseless.treatment.uncertainty = false;
        ofTruth.add(answer.samples(), set.truth);
        ofResolved.add(answer.samples(), laboratory.run(noiseless).samples());
    }
    if (makeJob == division) {
        figures.between(fmt::format("{}, {}: the truth", set.name, method), 0.94, 0.96,
                        ofTruth.share());
        return;
    }
    figures.between(fmt::format("{}, {}: at the result's resolution", set.name, method), 0.93, 0.97,
                    ofResolved.share());
    figures.note("the truth itself", ofTruth.share());
}

void measureCoverage(Laboratory& laboratory, Figures& figures) {
    figures.section("share within the band, 20 seeds, noise 1e-2 and known");
    for (const char* const name : {"bursts", "electrocardiogram"}) {
        measure(laboratory, figures, dataSet(name), division, "division");
    }
    for (const char* const name : {"X-ray lines", "Raman-like lines", "lifetime"}) {
        measure(laboratory, figures, dataSet(name), Laboratory::iteration, "iteration");
    }
    for (const char* const name :
         {"X-ray lines", "Raman-like lines", "events", "bursts", "lifetime", "head"}) {
        measure(laboratory, figures, dataSet(name), Laboratory::regularized, "regularised");
    }
}
