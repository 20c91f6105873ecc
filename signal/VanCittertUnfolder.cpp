#include "signal/VanCittertUnfolder.h"

#include "kernels/WorkWatch.h"
#include "signal/FoldEngine.h"
#include "signal/watched.h"

#include <algorithm>
#include <cstddef>
#include <new>
#include <optional>
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
        {
            const kernels::WorkPart firstHalf(0.0, 0.5);
            convolve(residual, reversedKernel.data(), trial);
        }
        for (std::size_t i = 0; i < trial.size(); ++i) {
            trial[i] = trial[i] * convergence + estimate[i];
        }
        const kernels::WorkPart secondHalf(0.5, 1.0);
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

// Of the first step; the start takes one convolution, and a step two.
static constexpr double startShare = 1.0 / 3.0;

// Whoever watches may throw: a run that has an estimate is not lost by that.
static bool isToStop(const VanCittertUnfolder& settings, std::uint32_t loop, double error,
                     const VanCittertRun& run) {
    if (!settings.keepGoing) {
        return false;
    }
    try {
        return !settings.keepGoing(loop, error, run.result().data());
    } catch (...) {
        return true;
    }
}

// The next step's error; none: stopped, and the estimate before stands. Before the first step there
// is none that would.
static std::optional<double> nextError(const VanCittertUnfolder& settings, VanCittertRun& run,
                                       std::uint32_t loopCount) {
    const kernels::WorkPart step(loopCount == 1 ? startShare : 0.0, 1.0);
    try {
        return run.step(settings.convergence);
    } catch (const kernels::Stopped&) {
        if (loopCount == 1) {
            throw;
        }
        return std::nullopt;
    }
}

// Comparisons are turned so that an error that is not a number is not greater than anything.
static void iterate(const VanCittertUnfolder& settings, VanCittertRun& run, double& lastError,
                    std::uint32_t& loopCount) {
    {
        const kernels::WorkPart start(0.0, startShare);
        lastError = run.startError();
    }
    loopCount = 1;
    bool stop = settings.maxIterations < 2;
    while (!stop) {
        const std::optional<double> next = nextError(settings, run, loopCount);
        if (!next) {
            return;
        }
        const double error = *next;
        const bool raised = settings.abortAtMinError != 0 && error > lastError;
        if (!raised) {
            run.accept();
            ++loopCount;
            lastError = error;
        }
        const bool reached = settings.abortAtError != 0 && !(error > settings.errorValue);
        stop = raised || isToStop(settings, loopCount, error, run) || reached ||
               loopCount >= settings.maxIterations;
    }
}

int VanCittertUnfolder::unfold(const double* signal, int signalLength, const double* kernel,
                               int kernelLength, double* result, int resultLength) {
    if (signalLength < kernelLength || resultLength != signalLength) {
        return 0;
    }
    return watched(within, [&] {
        VanCittertRun run(signal, signalLength, kernel, kernelLength);
        double error = 0.0;
        std::uint32_t loops = 0;
        iterate(*this, run, error, loops);
        std::copy(run.result().begin(), run.result().end(), result);
        lastError = error;
        loopCount = loops;
    });
}
