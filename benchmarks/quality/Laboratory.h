#pragma once

#include "benchmarks/quality/DataSet.h"
#include "workbench/jobs/FoldJob.h"
#include "workbench/module/ModuleLibrary.h"

#include <vector>

// A result with its record, and what was found around the module.
struct Answer {
    Outcome outcome;
    Treatment treatment;

    [[nodiscard]] const std::vector<double>& samples() const { return outcome.result.interleaved; }
    [[nodiscard]] const ChoiceRecord& choice() const { return *outcome.record.choice; }
};

// Runs jobs with the module beside the program, and watches the prediction of each iteration.
class Laboratory {
public:
    // Deconvolutions in which everything is left to the data.
    static FoldJob iteration(const DataSet& set, const std::vector<double>& measured);
    static FoldJob regularized(const DataSet& set, const std::vector<double>& measured);
    static FoldJob automatic(const DataSet& set, const std::vector<double>& measured);
    // The same job with what was found, so that it searches nothing.
    static FoldJob repeated(FoldJob job, const Answer& found);

    Answer run(const FoldJob& job);
    Answer run(FoldJob job, JobObserver& observer);

    // The largest difference of predicted and reported last error beyond rounding, relative to the
    // latter, in all runs of an iteration whose prediction is known; and their number.
    [[nodiscard]] double worstPrediction() const { return worst; }
    [[nodiscard]] int predictions() const { return predicted; }

private:
    ModuleLibrary library{ModuleLibrary::standardFile()};
    double worst = 0.0;
    int predicted = 0;
};
