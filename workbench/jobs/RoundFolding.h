#pragma once

#include "workbench/jobs/ConvolutionPlace.h"
#include "workbench/jobs/FoldJob.h"
#include "workbench/jobs/Folding.h"
#include "workbench/module/DriverPool.h"
#include "workbench/module/ModuleRun.h"

#include <memory>
#include <optional>
#include <vector>

class SignalReader;

// A job in rounds: a periodic convolution, or a deconvolution in blocks. The result of a
// convolution of whole signals is moved to where it belongs; several blocks stay as the module
// gives them. Rounds and channels run in several threads, with at most as many rounds in memory.
class RoundFolding final : public Folding {
public:
    // whole: each signal is one block. Failure as ModuleRun and zeroOf, and if more is asked of
    // blocks than the module does.
    RoundFolding(const FoldJob& foldJob, const ModuleLibrary& library,
                 std::unique_ptr<SignalReader> firstReader,
                 std::unique_ptr<SignalReader> secondReader, bool whole);

    [[nodiscard]] const Method& method() const override { return used; }
    [[nodiscard]] JobSize size() const override;
    void describe(RunRecord& record) const override;
    [[nodiscard]] std::optional<SignalAxis> axis() const override { return place.axis; }
    void run(ResultTap& tap, StepRelay& relay, Findings& findings, RunRecord& record) override;

private:
    [[nodiscard]] ConvolutionPlace placeOfWhole();
    [[nodiscard]] int threadsThatFit() const;
    void runChannel(ModuleRun::Round& round, int channel, StepRelay& relay);
    void deliver(const ModuleRun::Round& round, ResultTap& tap) const;

    const FoldJob& job;
    const Method& used;
    std::unique_ptr<SignalReader> first, second;
    DriverPool drivers;
    ConvolutionPlace place;
    std::optional<ModuleRun> driven;
    int threads = 1;
};
