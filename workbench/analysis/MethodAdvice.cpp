#include "workbench/analysis/MethodAdvice.h"

#include "workbench/analysis/AnswerChoice.h"
#include "workbench/analysis/CurveSearch.h"

#include <fmt/format.h>

#include <cmath>
#include <optional>

// Root of the share that the noise has in the energy of Y/H, not a number if a bin of H is empty.
static double noiseOfQuotient(const PowerSpectra& spectra, double noise) {
    double quotient = 0.0, inverse = 0.0;
    for (std::size_t j = 0; j < spectra.kernel.size(); ++j) {
        quotient += spectra.multiplicity(j) * spectra.signal[j] / spectra.kernel[j];
        inverse += spectra.multiplicity(j) / spectra.kernel[j];
    }
    const double noiseOfBin = noise * noise * spectra.length * spectra.oversampling;
    return std::sqrt(noiseOfBin * inverse / quotient);
}

static bool keepsNearlyAll(const PowerSpectra& spectra) {
    const RegularizedCurve curve(spectra, 2);
    return searchStrength(curve, std::nullopt).best.kept > 0.95 * spectra.degrees();
}

static bool leavesHalfEmpty(const PowerSpectra& spectra) {
    const double low = 1e-3 * 1e-3 * spectra.largestGain();
    int empty = 0;
    for (std::size_t j = 0; j < spectra.kernel.size(); ++j) {
        empty += spectra.kernel[j] < low ? spectra.multiplicity(j) : 0;
    }
    return 2 * empty >= spectra.degrees();
}

static bool needsMoreSteps(const PowerSpectra& spectra) {
    const IterationCurve curve(spectra, 1.0 / spectra.largestGain());
    return chooseSteps(curve, std::nullopt).parameter >=
           static_cast<double>(AnswerChoice::mostSteps);
}

MethodAdvice adviseMethod(double symmetry, const PowerSpectra& spectra, double noise) {
    const double quotientNoise = noiseOfQuotient(spectra, noise);
    const double signal = std::sqrt(spectra.energy() / spectra.length);
    if (quotientNoise < 0.1 && (noise < 1e-3 * signal || keepsNearlyAll(spectra))) {
        return {MethodAdvice::Method::division,
                fmt::format("the noise makes {:.2g} % of the quotient of the spectra, less than "
                            "regularisation might blur",
                            100.0 * quotientNoise)};
    }
    constexpr double symmetric = 0.95;
    if (!(symmetry >= symmetric)) {
        return {MethodAdvice::Method::regularized, "the kernel is not a symmetric peak"};
    }
    if (!leavesHalfEmpty(spectra)) {
        return {MethodAdvice::Method::regularized,
                "the kernel is not smooth: its spectrum is wide"};
    }
    if (needsMoreSteps(spectra)) {
        return {
            MethodAdvice::Method::regularized,
            fmt::format("the iteration would need more than {} steps", AnswerChoice::mostSteps)};
    }
    return {MethodAdvice::Method::iteration, "the kernel is a smooth symmetric peak"};
}
