#include "signal/VanCittertUnfolder.h"

#include "signal/FoldEngine.h"

#include <algorithm>
#include <cstddef>
#include <new>
#include <stdexcept>
#include <vector>

namespace {

// The arrays of a run, on the signal y (n samples) and the kernel h (m samples).
class VanCittertRun {
public:
    VanCittertRun(const double* signal, int signalLength, const double* kernel, int kernelLength)
        : y(signal),
          h(kernel),
          n(signalLength),
          m(kernelLength),
          estimate(static_cast<std::size_t>(n)),
          trial(estimate),
          model(estimate),
          residual(estimate),
          reversedKernel(kernel, kernel + m) {
        std::reverse(reversedKernel.begin(), reversedKernel.end());
    }

    // Error of the estimate that a run starts from.
    double startError() { return errorOf(estimate); }

    // Makes the next estimate on trial, and gives its error.
    double step(double convergence) {
        convolve(residual, reversedKernel.data(), trial);
        for (std::size_t i = 0; i < trial.size(); ++i) {
            trial[i] = trial[i] * convergence + estimate[i];
        }
        return errorOf(trial);
    }

    void accept() { estimate.swap(trial); }

    [[nodiscard]] const std::vector<double>& result() const { return estimate; }

private:
    double errorOf(const std::vector<double>& x) {
        convolve(x, h, model);
        double error = 0.0;
        for (std::size_t i = 0; i < residual.size(); ++i) {
            residual[i] = y[i] - model[i];
            error += residual[i] * residual[i];
        }
        return error;
    }

    void convolve(const std::vector<double>& x, const double* kernel, std::vector<double>& sum) {
        if (engine.fold(x.data(), n, kernel, m, sum.data(), n, 0) != 1) {
            throw std::bad_alloc();
        }
    }

    const double* y;
    const double* h;
    int n, m;
    std::vector<double> estimate, trial, model, residual, reversedKernel;
    FoldEngine engine;
};

}  // namespace

VanCittertUnfolder::VanCittertUnfolder(double stepFactor, std::uint32_t largestLoopCount,
                                       std::int32_t stopAtError, double smallEnoughError,
                                       std::int32_t stopAtMinError)
    : convergence(stepFactor),
      maxIterations(largestLoopCount),
      abortAtError(stopAtError),
      errorValue(smallEnoughError),
      abortAtMinError(stopAtMinError) {}

// Whoever watches may throw: a run that has an estimate is not lost by that.
static bool isToStop(const VanCittertUnfolder& settings, std::uint32_t loop, double error) {
    if (!settings.keepGoing) {
        return false;
    }
    try {
        return !settings.keepGoing(loop, error);
    } catch (...) {
        return true;
    }
}

// Comparisons are turned so that an error that is not a number is not greater than anything.
static void iterate(const VanCittertUnfolder& settings, VanCittertRun& run, double& lastError,
                    std::uint32_t& loopCount) {
    lastError = run.startError();
    loopCount = 1;
    bool stop = settings.maxIterations < 2;
    while (!stop) {
        const double error = run.step(settings.convergence);
        const bool raised = settings.abortAtMinError != 0 && error > lastError;
        if (!raised) {
            run.accept();
            ++loopCount;
            lastError = error;
        }
        const bool reached = settings.abortAtError != 0 && !(error > settings.errorValue);
        stop = raised || isToStop(settings, loopCount, error) || reached ||
               loopCount >= settings.maxIterations;
    }
}

int VanCittertUnfolder::unfold(const double* signal, int signalLength, const double* kernel,
                               int kernelLength, double* result, int resultLength) {
    if (signalLength < kernelLength || resultLength != signalLength) {
        return 0;
    }
    try {
        VanCittertRun run(signal, signalLength, kernel, kernelLength);
        double error = 0.0;
        std::uint32_t loops = 0;
        iterate(*this, run, error, loops);
        std::copy(run.result().begin(), run.result().end(), result);
        lastError = error;
        loopCount = loops;
    } catch (const std::bad_alloc&) {
        return 0;
    } catch (const std::length_error&) {  // a size beyond what vectors hold
        return 0;
    }
    return 1;
}
