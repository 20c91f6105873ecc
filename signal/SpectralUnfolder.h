#pragma once

#include "signal/KeptPlan.h"

#include <functional>

// Deconvolution by division of spectra. With P the longer of the two lengths, both operands padded
// with zeros to P and transformed to Y and H,
//     X[i] = Y[i] conj(H[i]) / |H[i]|^2,
// so that the periodic convolution of x with the kernel gives the signal. There is no
// regularisation: where |H[i]|^2 is exactly 0, X[i] is 0, and where it is merely small the noise of
// the signal grows without bound. The result has no lag: it undoes the frequency-domain mode of
// FoldEngine in place, and leaves the one-sample delay of the time-domain mode in the result.
class SpectralUnfolder {
public:
    virtual ~SpectralUnfolder() = default;

    // Asked every few milliseconds within a run whether to go on, with the share of it that is
    // done; empty: always. Where the answer is false, or the question throws, the run ends by 0.
    // Without it, who watches the caller's work is asked (kernels/WorkWatch.h).
    std::function<bool(double share)> within;

    // Where runs keep what prepares their transforms, until one of another length; null: in the
    // object. Who makes an object for each run has it kept beyond them.
    KeptPlan* keptPlan = nullptr;

    // signal: measured signal, numerator; kernel: denominator. Lengths are not negative and may
    // differ in either direction; the two never change roles.
    //   result    caller's array of resultLength samples, apart from both operands: the first
    //             resultLength samples of x, 0.0 beyond P.
    //   returns   1: done. 0: memory exhausted, or stopped; nothing written.
    int unfold(const double* signal, int signalLength, const double* kernel, int kernelLength,
               double* result, int resultLength);

private:
    KeptPlan ownPlan;
};
