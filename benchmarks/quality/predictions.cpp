#include "benchmarks/quality/Oracle.h"
#include "benchmarks/quality/disturbances.h"
#include "benchmarks/quality/sections.h"

#include <fmt/core.h>

#include <algorithm>
#include <optional>

static double distance(std::vector<double> a, const std::vector<double>& b) {
    for (std::size_t i = 0; i < a.size(); ++i) {
        a[i] -= b[i];
    }
    return rootMeanSquare(a) / rootMeanSquare(b);
}

// The largest distance of the module's three runs from the closed form, at a strength, or at those
// that are found.
static double closedFormDistance(Laboratory& laboratory, std::optional<double> strength) {
    double largest = 0.0;
    for (const DataSet& set : dataSets()) {
        const std::vector<double> blurred = set.blurred();
        for (const double level : {1e-3, 5e-2}) {
            const std::vector<double> measured = withWhiteNoise(blurred, level, 1);
            FoldJob job = Laboratory::regularized(set, measured);
            job.treatment.strength = strength;
            const Answer answer = laboratory.run(job);
            largest = std::max(
                largest,
                distance(answer.samples(),
                         Oracle(set, measured).regularizedAnswer(*answer.choice().strength)));
        }
    }
    return largest;
}

void measurePredictions(Laboratory& laboratory, Figures& figures) {
    figures.section("predictions and closed forms");
    figures.atMost(fmt::format("last error, predicted and reported, worst of {} runs",
                               laboratory.predictions()),
                   1e-6, laboratory.worstPrediction());
    for (const double strength : {1e-4, 1.0}) {
        figures.atMost(fmt::format("regularised, at strength {:g}", strength), 1e-6,
                       closedFormDistance(laboratory, strength));
    }
    figures.atMost("regularised, at those found, noise 1e-3 and 5e-2", 1e-6,
                   closedFormDistance(laboratory, std::nullopt));
}
