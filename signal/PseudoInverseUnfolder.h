#pragma once

#include <cstdint>
#include <functional>

// Deconvolution by a pseudo-inverse filter. With h the kernel and N the common length, the filter f
// of N samples minimises the sum of squares of
//     c - unit impulse at index N - 1,    c = f convolved with h, all 2 N - 1 samples.
// Its normal equations are R f = d, with R[i][j] the autocorrelation of h at the lag |i - j| and
// d[i] = h[N - 1 - i]; they are solved as a general dense system, N^3 / 3 multiply-adds and N^2
// doubles. The result is the signal convolved with f in the time-domain mode of FoldEngine. The
// impulse at N - 1 delays by N - 1 samples and that mode by one more: under the period N by none.
// So a periodic convolution without lag comes back in place.
//
// c is the pseudo-identity; the deviations measure how far it is from the impulse.
class PseudoInverseUnfolder {
public:
    // Results of a run that returned 1.
    double zeroDeviation = 0.0;  // root mean square of c outside its centre; not a number for N = 1
    double oneDeviation = 0.0;   // 1 minus the central element of c

    // What is scaled to 1:
    //     1   central element of c        3   sum of the magnitudes of c
    //     2   root of the sum of c^2      4   root of the sum of f^2
    //     any other: nothing. Where the norm is 0, f and the result are infinite or not a number.
    std::int32_t scalingKind;

    // Asked every few milliseconds within a run whether to go on, with the share of it that is
    // done; empty: always. Where the answer is false, or the question throws, the run ends by 0.
    // Without it, who watches the caller's work is asked (kernels/WorkWatch.h).
    std::function<bool(double share)> within;

    explicit PseudoInverseUnfolder(std::int32_t kind) : scalingKind(kind) {}
    virtual ~PseudoInverseUnfolder() = default;

    // All three lengths are equal.
    //   returns   1: done; also at the length 0, which writes nothing.
    //             0: lengths differ, the kernel's autocorrelation is all zero, memory is
    //             exhausted, or stopped. Neither result nor deviations written, except that a run
    //             which is stopped late has begun to write the result.
    int unfold(const double* signal, int signalLength, const double* kernel, int kernelLength,
               double* result, int resultLength);
};
