#pragma once

#include "workbench/analysis/BlockConvolution.h"

// Overlap-add: each block of L samples is convolved by transforms of a length N of at least L + m -
// 1, and what reaches beyond it is added to the blocks after it (T. G. Stockham, "High-speed
// convolution and correlation", Proc. AFIPS Spring Joint Computer Conf. 28 (1966) 229-233). The
// transforms are Hartley's, so a product of spectra takes the even and the odd part of the
// kernel's: with E[j] = (H[j] + H[N - j]) / 2 and O[j] = (H[j] - H[N - j]) / 2
//     C[j] = X[j] E[j] + X[N - j] O[j]
// (R. N. Bracewell, "Discrete Hartley transform", J. Opt. Soc. Am. 73 (1983) 1832-1835).
//
// The error is that of the transforms, some 1e-15 of a block's root mean square, whatever n.
class OverlapAdd final : public BlockConvolution {
public:
    // kernelTaps: 1 to mostTaps. givenLength: L, at least 1; a longest one, that of transforms of
    // 2^30, takes the place of longer ones. 0: the L that costs least.
    explicit OverlapAdd(std::vector<double> kernelTaps, std::int64_t givenLength = 0);

    static Demand demand(std::int64_t taps, std::int64_t givenLength);

    [[nodiscard]] std::int64_t block() const override { return blockLength; }
    [[nodiscard]] std::int64_t history() const override { return 0; }
    // Transforms the kernel at the length that the first block needs, which is shorter where the
    // whole signal is.
    void prepare(std::int64_t firstBlock) override;
    [[nodiscard]] std::vector<double> convolve(const double* window,
                                               std::int64_t count) const override;

private:
    void multiplySpectra(double* x) const;

    std::vector<double> taps;
    std::int64_t blockLength;
    std::size_t length = 0;         // N
    std::vector<double> even, odd;  // of the taps' spectrum, j = 0 .. N / 2, divided by N
};
