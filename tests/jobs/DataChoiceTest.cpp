#include "workbench/jobs/DataChoice.h"

#include "host/B_BasisModule.h"
#include "workbench/messages/Failure.h"
#include "workbench/module/ModuleLibrary.h"
#include "workbench/signals/Signal.h"

#include <gtest/gtest.h>

static SignalSource triangle(int samples) {
    Signal signal;
    signal.info.channels = 1;
    signal.info.samples = samples;
    for (int i = 0; i < samples; ++i) {
        signal.interleaved.push_back(i < samples / 2 ? i : samples - i);
    }
    return sourceOf(std::make_shared<const Signal>(signal));
}

// An error that the curve does not give means that the choice was made for another iteration.
TEST(DataChoice, RemarksThatTheModuleReportsAnotherErrorThanPredicted) {
    FoldJob job;
    job.first = job.second = triangle(32);
    job.settings.direction = FendraSettings::deconvolution;
    job.leftToData = {.convergence = true, .maxIterations = true};
    const ModuleLibrary library(ModuleLibrary::standardFile());
    const ModuleObject module = library.makeModule();
    const auto first = job.first.open(), second = job.second.open();
    const ModuleRun moduleRun(*module, *first, *second, {});
    EXPECT_THROW(DataChoice(job, moduleRun), Failure);  // not by division

    job.settings.method = FendraSettings::vanCittert;
    const DataChoice choice(job, moduleRun);
    const double steps = static_cast<double>(choice.record().steps);
    const double predicted = choice.record().predictedError;
    const auto remarks = [&](double error, double loopCount) {
        return choice.remarks({{.round = 0, .channel = 0, .values = {error, loopCount}}});
    };
    const std::vector<std::string> ordinary = remarks(predicted, steps + 1.0);
    for (const auto& [error, loopCount] :
         {std::pair{1.01 * predicted, steps + 1.0}, std::pair{predicted, steps}}) {
        const std::vector<std::string> wrong = remarks(error, loopCount);
        ASSERT_EQ(wrong.size(), ordinary.size() + 1);
        EXPECT_TRUE(wrong.back().starts_with("internal error: "));
    }
}
