#pragma once

#include "signal/KeptPlan.h"

#include <functional>

// Convolution of two real signals, periodic with the length of the longer one.
// With a the longer operand (L samples), b the shorter (S samples) and, for n = 0 .. L-1,
//     c[n] = sum_k b[k] a[(n - k) mod L],
// the two modes deliver
//     mode 0, time domain        result[n] = c[(n - 1) mod L]    L S multiply-adds
//     mode 1, frequency domain   result[n] = c[n]                three transforms of length L
// The iteration and the pseudo-inverse filter rest on the one-sample lag of mode 0.
class FoldEngine {
public:
    virtual ~FoldEngine() = default;

    // Asked every few milliseconds within a run whether to go on, with the share of it that is
    // done; empty: always. Where the answer is false, or the question throws, the run ends by 0.
    // Without it, who watches the caller's work is asked (kernels/WorkWatch.h).
    std::function<bool(double share)> within;

    // Where mode 1 keeps what prepares its transforms, until a run of another length; null: in the
    // engine. Who makes an engine for each run has it kept beyond them.
    KeptPlan* keptPlan = nullptr;

    // Convolves first with second. The longer one is a; at equal lengths it is first. Lengths are
    // not negative.
    //   result    caller's array of resultLength samples, apart from both operands. Beyond L
    //             mode 0 leaves it alone and mode 1 fills it with 0.0.
    //   returns   1: done; also for any other mode, which writes nothing.
    //             0: resultLength below L, or memory exhausted: nothing written. Or stopped: what
    //             is in result is of no use.
    int fold(const double* first, int firstLength, const double* second, int secondLength,
             double* result, int resultLength, int mode);

private:
    KeptPlan ownPlan;
};
