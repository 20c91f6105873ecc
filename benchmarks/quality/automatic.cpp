#include "benchmarks/quality/Oracle.h"
#include "benchmarks/quality/Ratios.h"
#include "benchmarks/quality/disturbances.h"
#include "benchmarks/quality/sections.h"

#include <fmt/core.h>

#include <cstdint>

void measureAutomatic(Laboratory& laboratory, Figures& figures) {
    figures.section("error of --auto over the best of any method");
    Ratios all;
    int different = 0;
    for (const DataSet& set : dataSets()) {
        const std::vector<double> blurred = set.blurred();
        Ratios ratios;
        for (const double level : {1e-4, 1e-3, 1e-2, 5e-2}) {
            for (std::uint64_t seed = 1; seed <= 3; ++seed) {
                const std::vector<double> measured = withWhiteNoise(blurred, level, seed);
                const FoldJob job = Laboratory::automatic(set, measured);
                const Answer answer = laboratory.run(job);
                const Oracle oracle(set, measured);
                const double ratio = oracle.errorOf(answer.samples()) / oracle.best();
                ratios.add(ratio);
                all.add(ratio);
                const Answer again = laboratory.run(Laboratory::repeated(job, answer));
                different += again.outcome.record.digest != answer.outcome.record.digest ? 1 : 0;
            }
        }
        figures.atMost(fmt::format("{}, worst run", set.name), 1.5, ratios.worst());
    }
    figures.atMost("all of these, median", 1.1, all.median());
    figures.atMost("runs that another one with what was found does not repeat", 0.0, different);
}
