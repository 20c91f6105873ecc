#pragma once

#include "workbench/jobs/FoldJob.h"
#include "workbench/jobs/Folding.h"
#include "workbench/messages/Failure.h"
#include "workbench/treatment/Deconvolution.h"

#include <vector>

class ModuleLibrary;

// A job that deconvolves whole signals: they are in memory, and what is left to the data is chosen.
// Channels run in several threads.
class WholeDeconvolution final : public Folding {
public:
    // Failure as Deconvolution; if channels or lengths do not go together, the kernel is all zero,
    // a curve is to be written of a search that there is not, or memory does not suffice.
    WholeDeconvolution(const FoldJob& foldJob, const ModuleLibrary& library, Signal measured,
                       Signal kernelSignal, JobObserver& observer);

    [[nodiscard]] const Method& method() const override { return deconvolution->method(); }
    [[nodiscard]] JobSize size() const override;
    void describe(RunRecord& record) const override;
    [[nodiscard]] std::optional<SignalAxis> axis() const override { return deconvolution->axis(); }
    [[nodiscard]] int passes() const override { return deconvolution->passes(); }
    [[nodiscard]] bool hasBand() const override { return passes() > 1; }
    void run(ResultTap& tap, StepRelay& relay, Findings& findings, RunRecord& record) override;

private:
    void checkPairing() const;
    void writeCurve() const;
    [[nodiscard]] int channels() const;
    [[nodiscard]] JobSize sizeOfChannel() const;
    [[nodiscard]] int threadsThatFit() const;
    [[nodiscard]] Deconvolution::Answer answer(int channel, StepRelay& relay) const;
    [[noreturn]] void throwStopped() const;
    [[nodiscard]] bool isOneIteration() const;
    void describeStop(const Deconvolution::Answer& answer, RunRecord& record) const;
    void report(const Deconvolution::Answer& answer, int channel, Findings& findings,
                RunRecord& record) const;

    const FoldJob& job;
    Signal signal, kernel;
    std::optional<Deconvolution> deconvolution;
    int threads = 1;
};
