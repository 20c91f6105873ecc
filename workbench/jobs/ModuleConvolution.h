#pragma once

#include "workbench/analysis/BlockConvolution.h"
#include "workbench/module/DriverPool.h"

// Overlap-save by the module's time domain: each block goes to it with the m - 1 samples before it,
// and of the periodic result those that do not wrap round are taken (H. D. Helms, "Fast Fourier
// transform method of computing difference equations and simulating filters", IEEE Trans. Audio
// Electroacoust. 15 (1967) 85-90). A sample of the result is one sum of the module, of the same
// terms in the same order whatever the block: its bits are those of a run over the whole signal.
class ModuleConvolution final : public BlockConvolution {
public:
    // modules: set to the time domain, per block; they stay the caller's. lag: by which their
    // result is late. kernelTaps: 1 to mostTaps. givenLength: L, at least 1, as far as a module
    // takes it; 0: what costs little.
    ModuleConvolution(DriverPool& modules, int lag, std::vector<double> kernelTaps,
                      std::int64_t givenLength);

    static Demand demand(std::int64_t taps, std::int64_t givenLength);

    [[nodiscard]] std::int64_t block() const override { return blockLength; }
    [[nodiscard]] std::int64_t history() const override { return std::ssize(taps) - 1; }
    void prepare(std::int64_t /*firstBlock*/) override {}
    // Failure as ModuleDriver.
    [[nodiscard]] std::vector<double> convolve(const double* window,
                                               std::int64_t count) const override;

private:
    DriverPool& pool;
    int late;
    std::vector<double> taps;
    std::int64_t blockLength;
};
