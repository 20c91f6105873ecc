#pragma once

#include "workbench/analysis/AnswerChoice.h"
#include "workbench/analysis/IterationCurve.h"
#include "workbench/jobs/FoldJob.h"
#include "workbench/jobs/RunRecord.h"
#include "workbench/module/ModuleRun.h"

#include <optional>
#include <string>
#include <vector>

// The settings of the iteration that a job leaves to its data, chosen before the module runs:
//     convergence      1 / max |H|^2, at which the strongest component is restored in one step
//     max-iterations   one more than the steps of chooseSteps
// Of several channels, the one whose signal has most energy decides, the first of equal ones, with
// the kernel that goes with it; the settings found hold for all.
class DataChoice {
public:
    // Reads the sources of the job, which must be readable again.
    // Failure if settings are left to the data that play no part, if the run has several blocks, if
    // PowerSpectra refuses the signals, or if steps were asked for and explain less than 5 % of the
    // signal's energy.
    DataChoice(const FoldJob& job, const ModuleRun& moduleRun);

    // Those of the job, with what was found.
    [[nodiscard]] const FendraSettings& settings() const { return found; }
    [[nodiscard]] ChoiceRecord record() const;
    // What speaks against the choice. numbers: those that the module has reported.
    [[nodiscard]] std::vector<std::string> remarks(
        const std::vector<ReportedNumbers>& numbers) const;

private:
    void refuseUnexplained(const SignalInfo& info) const;

    LeftToData left;
    FendraSettings found;
    int channel = 0;
    std::optional<IterationCurve> curve;
    AnswerChoice choice;
};
