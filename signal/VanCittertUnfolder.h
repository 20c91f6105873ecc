#pragma once

#include <cstdint>
#include <functional>

// Deconvolution by the modified van Cittert iteration (P. H. van Cittert, "Zum Einfluss der
// Spaltbreite auf die Intensitaetsverteilung in Spektrallinien II", Z. Phys. 69 (1931) 298-308).
// With y the signal, h the kernel and * the periodic convolution, the estimate x starts at 0 and
// each step adds the residual, correlated with the kernel:
//     x  <-  x + convergence (h correlated with (y - h * x)).
// The error of an estimate is the sum of the squared residuals over all samples.
//
// Convolution and correlation are the time-domain mode of FoldEngine. In the correlation, with the
// kernel reversed, its lag of one sample cancels where signal and kernel are equally long; the
// model h * x carries it. So the iteration undoes, in place, what that mode has convolved.
//
// A component of the error at the angular frequency w is multiplied by
// 1 - convergence |H(w)|^2 exp(-i w) in each step: the kernel has to be smooth.
class VanCittertUnfolder {
public:
    double convergence;           // factor of a step
    std::uint32_t maxIterations;  // bound on loopCount
    std::int32_t abortAtError;    // not 0: stop once the error is at or below errorValue
    double errorValue;
    // not 0: stop at the first step that raises the error, and drop it
    std::int32_t abortAtMinError;

    // Results of a run that returned 1.
    double lastError = 0.0;       // error of the estimate that is the result
    std::uint32_t loopCount = 0;  // 1 and the steps that were not dropped

    // Asked after each step that is kept, with its loop count, error and estimate, whether to go
    // on; empty: always. Where the answer is false, or the question throws, the run ends with that
    // step's estimate, as an ordinary success. The fields keep their places: append only.
    std::function<bool(std::uint32_t loop, double error, const double* estimate)> keepGoing;

    // Asked every few milliseconds within a step whether to go on, with the share of it that is
    // done; empty: always. Where the answer is false, or the question throws, the run ends with the
    // estimate of the last step that was kept, as an ordinary success; before the first one, by 0.
    std::function<bool(double share)> within;

    // The results are not set.
    VanCittertUnfolder(double stepFactor, std::uint32_t largestLoopCount, std::int32_t stopAtError,
                       double smallEnoughError, std::int32_t stopAtMinError);
    virtual ~VanCittertUnfolder() = default;

    // Estimates x. The signal is at least as long as the kernel, the result as long as the signal.
    // An error that is not a number counts as small: the step is kept, and abortAtError ends the
    // run.
    //   returns   1: done, maxIterations below 2 (the estimate is then 0) included.
    //             0: other lengths, memory exhausted, or stopped before a step was kept. Neither
    //             result nor fields written.
    int unfold(const double* signal, int signalLength, const double* kernel, int kernelLength,
               double* result, int resultLength);
};
