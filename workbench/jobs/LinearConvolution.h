#pragma once

#include "workbench/jobs/BlockRounds.h"
#include "workbench/jobs/ConvolutionPlace.h"
#include "workbench/jobs/FoldJob.h"
#include "workbench/jobs/Folding.h"
#include "workbench/messages/Failure.h"
#include "workbench/module/DriverPool.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

class ModuleLibrary;
class SignalReader;

// A linear convolution: the longer signal, at equal lengths the first, is read as a stream and
// convolved block by block, and the kernel alone is in memory. In the frequency domain the
// workbench computes it itself, in the time domain the module does. The result has n + m - 1
// samples, placed as ConvolutionPlace says; as the module gives them, its lag stands in front. Of a
// signal whose length is not yet known, it is handed on block by block as the signal comes.
class LinearConvolution final : public Folding {
public:
    // Whether a job is one.
    static bool does(const FoldJob& job);

    // Failure if the channels do not go together, the kernel is too long or does not fit in memory,
    // and as zeroOf. The length of one signal at most may be unknown.
    LinearConvolution(const FoldJob& foldJob, const ModuleLibrary& library,
                      std::unique_ptr<SignalReader> first, std::unique_ptr<SignalReader> second);

    [[nodiscard]] const Method& method() const override { return used; }
    [[nodiscard]] JobSize size() const override;
    void describe(RunRecord& record) const override;
    [[nodiscard]] std::optional<SignalAxis> axis() const override { return place.axis; }
    void run(ResultTap& tap, StepRelay& relay, Findings& findings, RunRecord& record) override;

private:
    std::unique_ptr<SignalReader> findKernel(std::unique_ptr<SignalReader> first,
                                             std::unique_ptr<SignalReader> second);
    void chooseWidth(const SignalInfo& kernel);
    BlockConvolution::Demand chooseBlock(std::int64_t m);
    std::unique_ptr<BlockConvolution> makeKernel(std::vector<double> samples);
    [[nodiscard]] bool comesAlong() const { return signal->info().samples == 0; }
    [[nodiscard]] std::int64_t blocks(std::int64_t samples) const;
    [[noreturn]] void throwStopped(std::int64_t done) const;
    void convolve(BlockRounds& rounds, StepRelay& relay, std::int64_t done) const;
    void describeLengths(RunRecord& record, std::int64_t samples) const;
    void pass(ResultTap& tap, const double* interleaved, std::int64_t samples);

    const FoldJob& job;
    const Method& used;
    std::unique_ptr<SignalReader> signal;
    std::size_t input = 0;              // which of both is the signal
    int channels = 1;                   // of the result
    std::int64_t taps = 0, block = 0;   // block: 0, what costs least
    std::string kernelDigest;           // SHA-256 of its file, where that is known
    std::optional<DriverPool> modules;  // of the time domain
    BlockRounds::Kernels kernels;
    BlockRounds::Room room;
    BlockRounds::Width width;
    ConvolutionPlace place;
    std::vector<double> turned;  // samples that stand at the end, interleaved
};
