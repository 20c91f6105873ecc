#include "frame/Algorithm.h"

#include "host/RunObserver.h"
#include "signal/FoldEngine.h"
#include "signal/PseudoInverseUnfolder.h"
#include "signal/SpectralUnfolder.h"
#include "signal/VanCittertUnfolder.h"

#include <algorithm>
#include <iterator>
#include <numeric>

namespace {

// Passes the questions within a run on to the observer of its thread.
class Questions {
public:
    // Without an observer the algorithm object asks nothing.
    template <typename Algorithm>
    Questions(Algorithm& algorithm, Pass& runPass) : pass(runPass) {
        if (observer != nullptr) {
            algorithm.within = [this](double share) { return ask(share); };
        }
    }

    RunObserver* const observer = RunObserver::current();
    RunPart part = {0.0, 0, 0};

private:
    // An observer that throws stops the run.
    bool ask(double share) {
        part.share = share;
        pass.stopped = true;
        pass.stopped = !observer->within(part);
        return !pass.stopped;
    }

    Pass& pass;
};

}  // namespace

// Runs an algorithm object on the signals of a pass.
template <typename Unfolder>
static int unfold(Unfolder& unfolder, Pass& pass) {
    return unfolder.unfold(pass.first.samples.get(), pass.first.length, pass.second.samples.get(),
                           pass.second.length, pass.result.samples.get(), pass.result.length);
}

static bool refusesNothing(const FoldSettings& /*settings*/, const Pass& /*pass*/) {
    return false;
}

// Of the methods the engine has the first two, whose numbers are its modes.
static bool isNoFoldMode(const FoldSettings& settings, const Pass& /*pass*/) {
    return settings.method != FoldSettings::timeDomain &&
           settings.method != FoldSettings::frequencyDomain;
}

static int fold(const FoldSettings& settings, Pass& pass) {
    if (isNoFoldMode(settings, pass)) {
        return 0;
    }
    FoldEngine engine;
    engine.keptPlan = pass.plan;
    const Questions questions(engine, pass);
    return engine.fold(pass.first.samples.get(), pass.first.length, pass.second.samples.get(),
                       pass.second.length, pass.result.samples.get(), pass.result.length,
                       settings.method);
}

static int unfoldSpectrally(const FoldSettings& /*settings*/, Pass& pass) {
    SpectralUnfolder unfolder;
    unfolder.keptPlan = pass.plan;
    const Questions questions(unfolder, pass);
    return unfold(unfolder, pass);
}

static int unfoldByIteration(const FoldSettings& settings, Pass& pass) {
    VanCittertUnfolder unfolder(settings.convergence, settings.maxIterations, settings.abortAtError,
                                settings.errorValue, settings.abortAtMinError);
    Questions questions(unfolder, pass);
    questions.part = {0.0, 1, settings.maxIterations};
    if (questions.observer != nullptr) {
        unfolder.keepGoing = [&](std::uint32_t loop, double error, const double* estimate) {
            questions.part.loop = loop;
            return questions.observer->afterStep(
                {loop, settings.maxIterations, error, estimate, pass.result.length});
        };
    }
    const int outcome = unfold(unfolder, pass);
    if (outcome > 0) {
        pass.extraValues[0] = unfolder.lastError;
        pass.extraValues[1] = unfolder.loopCount;
    }
    return outcome;
}

// The dialog's list has "no scaling" last, the filter has it first. Numbers beyond the list, which
// only a file can hold, scale nothing either.
static int scalingKind(std::int32_t scaling) {
    return scaling >= 0 && scaling <= 3 ? scaling + 1 : 0;
}

// Then its autocorrelation is all zero, or not a number.
static bool hasKernelWithoutEnergy(const FoldSettings& /*settings*/, const Pass& pass) {
    const double* const h = pass.second.samples.get();
    return !(std::inner_product(h, h + pass.second.length, h, 0.0) > 0.0);
}

static int unfoldByFilter(const FoldSettings& settings, Pass& pass) {
    PseudoInverseUnfolder unfolder(scalingKind(settings.scaling));
    const Questions questions(unfolder, pass);
    const int outcome = unfold(unfolder, pass);
    if (outcome > 0) {
        pass.extraValues[0] = unfolder.zeroDeviation;
        pass.extraValues[1] = unfolder.oneDeviation;
    }
    return outcome;
}

namespace {

struct Deconvolution {
    std::int32_t method;
    Algorithm algorithm;
};

}  // namespace

// Where results do not count, a run that fails leaves a block of NaN, and the step goes on: there
// is one block on the output for each pair on the inputs.
static constexpr Algorithm convolution = {false, false, fold, isNoFoldMode};
static constexpr Deconvolution deconvolutions[] = {
    {FoldSettings::frequencyDomain, {false, false, unfoldSpectrally, refusesNothing}},
    {FoldSettings::vanCittert, {true, true, unfoldByIteration, refusesNothing}},
    {FoldSettings::pseudoInverse, {true, true, unfoldByFilter, hasKernelWithoutEnergy}},
};

const Algorithm* selectAlgorithm(const FoldSettings& settings) {
    if (settings.direction == FoldSettings::convolution) {
        return &convolution;
    }
    const auto* const row = std::find_if(
        std::begin(deconvolutions), std::end(deconvolutions),
        [&](const Deconvolution& candidate) { return candidate.method == settings.method; });
    return row == std::end(deconvolutions) ? nullptr : &row->algorithm;
}
