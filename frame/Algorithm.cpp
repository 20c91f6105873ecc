#include "frame/Algorithm.h"

#include "signal/FoldEngine.h"
#include "signal/SpectralUnfolder.h"

#include <algorithm>
#include <iterator>

static int fold(const FoldSettings& settings, Pass& pass) {
    return FoldEngine().fold(pass.first.samples.get(), pass.first.length, pass.second.samples.get(),
                             pass.second.length, pass.result.samples.get(), pass.result.length,
                             settings.method);
}

static int unfoldSpectrally(const FoldSettings& /*settings*/, Pass& pass) {
    return SpectralUnfolder().unfold(pass.first.samples.get(), pass.first.length,
                                     pass.second.samples.get(), pass.second.length,
                                     pass.result.samples.get(), pass.result.length);
}

struct Deconvolution {
    int method;
    Algorithm algorithm;
};

static constexpr Algorithm convolution = {false, false, fold};
static constexpr Deconvolution deconvolutions[] = {
    {1, {false, false, unfoldSpectrally}},
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
