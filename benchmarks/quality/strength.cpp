#include "benchmarks/quality/Oracle.h"
#include "benchmarks/quality/Ratios.h"
#include "benchmarks/quality/disturbances.h"
#include "benchmarks/quality/sections.h"

#include <fmt/core.h>

#include <cstdint>

using Samples = std::vector<double>;

static double iterationRatio(Laboratory& laboratory, const DataSet& set, const Samples& measured,
                             const FoldJob& job) {
    const Answer answer = laboratory.run(job);
    const Oracle oracle(set, measured);
    return oracle.errorOf(answer.samples()) /
           oracle.iteration(answer.choice().oversampling.value_or(1));
}

static void measureXrayLines(Laboratory& laboratory, Figures& figures) {
    const DataSet set = dataSet("X-ray lines");
    const Samples blurred = set.blurred();
    for (const double level : {1e-3, 1e-2, 5e-2}) {
        Ratios ratios;
        for (std::uint64_t seed = 1; seed <= 10; ++seed) {
            const Samples measured = withWhiteNoise(blurred, level, seed);
            ratios.add(
                iterationRatio(laboratory, set, measured, Laboratory::iteration(set, measured)));
        }
        figures.atMost(fmt::format("{}, iteration, noise {:g}, worst of 10", set.name, level), 1.05,
                       ratios.worst());
    }
}

static void measureIteration(Laboratory& laboratory, Figures& figures, const DataSet& set) {
    const Samples blurred = set.blurred();
    Ratios white;
    for (const double level : {1e-3, 1e-2, 5e-2}) {
        for (std::uint64_t seed = 1; seed <= 2; ++seed) {
            const Samples measured = withWhiteNoise(blurred, level, seed);
            white.add(
                iterationRatio(laboratory, set, measured, Laboratory::iteration(set, measured)));
        }
    }
    figures.atMost(fmt::format("{}, iteration, white noise", set.name), 1.2, white.worst());
}

static void measureCounts(Laboratory& laboratory, Figures& figures, const DataSet& set) {
    const Samples blurred = set.blurred();
    Ratios ratios;
    for (const double peak : {1e2, 1e3, 1e4, 1e5}) {
        for (std::uint64_t seed = 1; seed <= 3; ++seed) {
            const Samples measured = counted(blurred, peak, seed);
            ratios.add(
                iterationRatio(laboratory, set, measured, Laboratory::iteration(set, measured)));
        }
    }
    figures.atMost(fmt::format("{}, iteration, counts", set.name), 1.25, ratios.worst());
}

static void measureColoured(Laboratory& laboratory, Figures& figures, const DataSet& original) {
    const DataSet set = original.withQuietStretch();
    const Samples blurred = set.blurred();
    Ratios ratios;
    for (const double level : {1e-3, 1e-2, 5e-2}) {
        for (std::uint64_t seed = 1; seed <= 2; ++seed) {
            const Samples measured = withColouredNoise(blurred, level, 0.9, seed);
            FoldJob job = Laboratory::iteration(set, measured);
            const auto first = static_cast<double>(set.quiet);
            job.treatment.noise = {KnownNoise::Kind::stretch, 0.0, {first, first + 399.0}};
            ratios.add(iterationRatio(laboratory, set, measured, job));
        }
    }
    figures.atMost(fmt::format("{}, iteration, AR(0.9) with a quiet stretch", set.name), 1.25,
                   ratios.worst());
}

static void measureRegularized(Laboratory& laboratory, Figures& figures,
                               const std::vector<DataSet>& sets) {
    Ratios all;
    for (const DataSet& set : sets) {
        const Samples blurred = set.blurred();
        Ratios ratios;
        for (const double level : {1e-3, 1e-2, 5e-2}) {
            for (std::uint64_t seed = 1; seed <= 10; ++seed) {
                const Samples measured = withWhiteNoise(blurred, level, seed);
                const Answer answer = laboratory.run(Laboratory::regularized(set, measured));
                const Oracle oracle(set, measured);
                const double ratio = oracle.errorOf(answer.samples()) / oracle.regularized(2);
                ratios.add(ratio);
                all.add(ratio);
            }
        }
        figures.atMost(fmt::format("{}, regularised, white noise", set.name), 1.4, ratios.worst());
    }
    figures.atMost("all of these, 95 of 100", 1.2, all.quantile(0.95));
}

void measureStrength(Laboratory& laboratory, Figures& figures) {
    figures.section("error over the best of the method, worst run");
    measureXrayLines(laboratory, figures);
    const std::vector<DataSet> sets = dataSets();
    measureRegularized(laboratory, figures, sets);
    for (const DataSet& set : sets) {
        if (set.name != "street") {  // a room is not a kernel for the iteration
            measureIteration(laboratory, figures, set);
        }
    }
    for (const DataSet& set : sets) {
        if (set.isCounts) {
            measureCounts(laboratory, figures, set);
        }
    }
    for (const DataSet& set : sets) {
        if (set.name != "street" && set.name != "head") {
            measureColoured(laboratory, figures, set);
        }
    }
}
