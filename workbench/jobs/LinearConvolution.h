#pragma once

#include "workbench/analysis/OverlapAdd.h"
#include "workbench/jobs/ConvolutionPlace.h"
#include "workbench/jobs/FoldJob.h"
#include "workbench/jobs/Folding.h"

#include <memory>
#include <vector>

class SignalReader;

// A linear convolution in the frequency domain, which the workbench computes itself: the longer
// signal, at equal lengths the first, is read as a stream, and the kernel alone is in memory. The
// result has n + m - 1 samples, placed as ConvolutionPlace says. Of a signal whose length is not
// yet known, it is handed on block by block as the signal comes.
class LinearConvolution final : public Folding {
public:
    // Whether a job is one.
    static bool does(const FoldJob& job);

    // Failure if the channels do not go together, the kernel is too long or does not fit in memory,
    // and as zeroOf. The length of one signal at most may be unknown.
    LinearConvolution(const FoldJob& foldJob, std::unique_ptr<SignalReader> first,
                      std::unique_ptr<SignalReader> second);

    [[nodiscard]] const Method& method() const override { return used; }
    [[nodiscard]] JobSize size() const override;
    void describe(RunRecord& record) const override;
    [[nodiscard]] std::optional<SignalAxis> axis() const override { return place.axis; }
    void run(ResultTap& tap, StepRelay& relay, Findings& findings, RunRecord& record) override;

private:
    std::unique_ptr<SignalReader> findKernel(std::unique_ptr<SignalReader> first,
                                             std::unique_ptr<SignalReader> second);
    [[nodiscard]] bool comesAlong() const { return signal->info().samples == 0; }
    [[nodiscard]] std::int64_t blocks(std::int64_t samples) const;
    void describeLengths(RunRecord& record, std::int64_t samples) const;
    void add(const std::vector<double>& interleaved, std::int64_t samples);
    void deliver(ResultTap& tap);
    void pass(ResultTap& tap, const double* interleaved, std::int64_t samples);

    const FoldJob& job;
    const Method& used;
    std::unique_ptr<SignalReader> signal;
    std::size_t input = 0;  // which of both is the signal
    std::int64_t taps = 0;
    ConvolutionPlace place;
    std::vector<OverlapAdd> convolutions;    // one a channel of the result
    std::vector<std::vector<double>> ready;  // of each, not yet delivered
    std::vector<double> turned;              // samples that stand at the end, interleaved
};
