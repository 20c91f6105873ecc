#include "frame/Algorithm.h"

#include "signal/FoldEngine.h"
#include "signal/PseudoInverseUnfolder.h"
#include "signal/SpectralUnfolder.h"
#include "signal/VanCittertUnfolder.h"

#include <algorithm>
#include <iterator>

// Runs an algorithm object on the signals of a pass.
template <typename Unfolder>
static int unfold(Unfolder& unfolder, Pass& pass) {
    return unfolder.unfold(pass.first.samples.get(), pass.first.length, pass.second.samples.get(),
                           pass.second.length, pass.result.samples.get(), pass.result.length);
}

static int fold(const FoldSettings& settings, Pass& pass) {
    return FoldEngine().fold(pass.first.samples.get(), pass.first.length, pass.second.samples.get(),
                             pass.second.length, pass.result.samples.get(), pass.result.length,
                             settings.method);
}

static int unfoldSpectrally(const FoldSettings& /*settings*/, Pass& pass) {
    SpectralUnfolder unfolder;
    return unfold(unfolder, pass);
}

static int unfoldByIteration(const FoldSettings& settings, Pass& pass) {
    VanCittertUnfolder unfolder(settings.convergence, settings.maxIterations, settings.abortAtError,
                                settings.errorValue, settings.abortAtMinError);
    const int outcome = unfold(unfolder, pass);
    if (outcome > 0) {
        pass.extraValues[0] = unfolder.lastError;
        pass.extraValues[1] = unfolder.loopCount;
    }
    return outcome;
}

// The dialog's list has "no scaling" last, the filter has it first.
static int scalingKind(std::int32_t scaling) {
    return scaling >= 0 && scaling <= 3 ? scaling + 1 : 0;
}

static int unfoldByFilter(const FoldSettings& settings, Pass& pass) {
    PseudoInverseUnfolder unfolder(scalingKind(settings.scaling));
    const int outcome = unfold(unfolder, pass);
    if (outcome > 0) {
        pass.extraValues[0] = unfolder.zeroDeviation;
        pass.extraValues[1] = unfolder.oneDeviation;
    }
    return outcome;
}

struct Deconvolution {
    int method;
    Algorithm algorithm;
};

static constexpr Algorithm convolution = {false, false, fold};
static constexpr Deconvolution deconvolutions[] = {
    {1, {false, false, unfoldSpectrally}},
    {2, {true, true, unfoldByIteration}},
    {3, {true, true, unfoldByFilter}},
};

const Algorithm* selectAlgorithm(const FoldSettings& settings) {
    if (settings.direction == 0) {
        return &convolution;
    }
    const auto* const row = std::find_if(
        std::begin(deconvolutions), std::end(deconvolutions),
        [&](const Deconvolution& candidate) { return candidate.method == settings.method; });
    return row == std::end(deconvolutions) ? nullptr : &row->algorithm;
}
