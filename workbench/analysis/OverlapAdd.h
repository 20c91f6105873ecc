#pragma once

#include <cstdint>
#include <vector>

// Linear convolution of a signal of any length with a kernel of m taps,
//     c[i] = sum_k h[k] x[i - k]      i = 0 .. n + m - 2
// in memory that does not grow with n. Overlap-add: the signal is cut into blocks of L samples,
// each is convolved by transforms of a length N of at least L + m - 1, and what it adds to later
// blocks is kept as a tail (T. G. Stockham, "High-speed convolution and correlation", Proc. AFIPS
// Spring Joint Computer Conf. 28 (1966) 229-233). The transforms are Hartley's, so a product of
// spectra takes the even and the odd part of the kernel's: with E[j] = (H[j] + H[N - j]) / 2 and
// O[j] = (H[j] - H[N - j]) / 2
//     C[j] = X[j] E[j] + X[N - j] O[j]
// (R. N. Bracewell, "Discrete Hartley transform", J. Opt. Soc. Am. 73 (1983) 1832-1835).
//
// The samples depend on taps, signal and L alone, not on how the signal is handed over. The error
// is that of the transforms, some 1e-15 of a block's root mean square, whatever n.
class OverlapAdd {
public:
    static constexpr std::int64_t mostTaps = std::int64_t{1} << 29;

    // kernelTaps: 1 to mostTaps. givenLength: L, at least 1; a longest one, that of transforms of
    // 2^30, takes the place of longer ones. 0: the L that costs least.
    explicit OverlapAdd(std::vector<double> kernelTaps, std::int64_t givenLength = 0);

    // Takes the next samples of the signal, and appends those of the result that are complete.
    void add(const double* samples, std::int64_t count, std::vector<double>& ready);

    // After the last sample: appends the rest of the result, which has n + m - 1 samples in all,
    // and none where the signal had none.
    void finish(std::vector<double>& ready);

    // L. A sample comes out once so many others, at most, have gone in after it.
    [[nodiscard]] std::int64_t block() const { return blockLength; }

    // Memory that an object and what it gives at once take, at most, in bytes.
    static double bytes(std::int64_t taps, std::int64_t givenLength);

private:
    void transformTaps();
    void multiplySpectra();
    void convolveBlock(std::vector<double>& ready);

    std::vector<double> taps;
    std::int64_t blockLength;
    std::vector<double> even, odd;  // of the taps' spectrum, j = 0 .. N / 2, divided by N
    std::vector<double> work;       // of the block being filled, at most L samples
    std::vector<double> tail;       // m - 1 samples
};
