#include "workbench/analysis/MethodAdvice.h"

#include "workbench/analysis/AnswerChoice.h"
#include "workbench/analysis/CurveSearch.h"

#include <fmt/format.h>

#include <cmath>
#include <complex>
#include <optional>

// Root of the share that the noise has in the energy of a part of the quotient Y/H; not a number if
// a bin of H is empty. partOf: of what a method leaves of a bin, the factor of the part.
static double noiseShare(const AnswerCurve& curve, double parameter, double noise,
                         std::complex<double> (*partOf)(std::complex<double> left)) {
    const PowerSpectra& spectra = curve.spectra();
    double part = 0.0, inverse = 0.0;
    for (std::size_t j = 0; j < spectra.kernel.size(); ++j) {
        const double gain = spectra.multiplicity(j) * std::norm(partOf(curve.left(j, parameter))) /
                            spectra.kernel[j];
        part += gain * spectra.signal[j];
        inverse += gain;
    }
    const double noiseOfBin = noise * noise * spectra.length * spectra.oversampling;
    return std::sqrt(noiseOfBin * inverse / part);
}

static std::complex<double> all(std::complex<double> /*left*/) {
    return 1.0;
}

static std::complex<double> answer(std::complex<double> left) {
    return 1.0 - left;
}

static std::complex<double> removed(std::complex<double> left) {
    return left;
}

// Whether regularised division takes off little noise, or much that is none.
static bool regularisingIsIdle(const RegularizedCurve& regularized, double strength, double noise) {
    return noiseShare(regularized, strength, noise, all) <
               2.0 * noiseShare(regularized, strength, noise, answer) ||
           noiseShare(regularized, strength, noise, removed) < 0.5;
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

// Whether the oversampled iteration passes far less noise on than regularised division, and fits
// nearly as well.
static bool iterationIsQuieter(const RegularizedCurve& regularized, const CurvePoint& best,
                               double noise) {
    constexpr double disturbing = 0.05;
    const double noiseOfRegularized = noiseShare(regularized, best.parameter, noise, answer);
    if (!(noiseOfRegularized > disturbing)) {
        return false;
    }
    constexpr int oversampling = 4;
    const PowerSpectra fine = regularized.spectra().oversampledBy(oversampling);
    const IterationCurve iteration(fine, 1.0 / fine.largestGain());
    const AnswerChoice steps = chooseSteps(iteration, std::nullopt);
    return !steps.atEdge() &&
           3.0 * noiseShare(iteration, steps.parameter, noise, answer) < 2.0 * noiseOfRegularized &&
           iteration.at(steps.parameter).criterion < 1.5 * oversampling * best.criterion;
}

static std::string reasonAgainstIteration(double symmetry, const PowerSpectra& spectra) {
    constexpr double symmetric = 0.95;
    if (!(symmetry >= symmetric)) {
        return "the kernel is not a symmetric peak";
    }
    if (!leavesHalfEmpty(spectra)) {
        return "the kernel is not smooth: its spectrum is wide";
    }
    return needsMoreSteps(spectra)
               ? fmt::format("the iteration would need more than {} steps", AnswerChoice::mostSteps)
               : "";
}

MethodAdvice adviseMethod(double symmetry, const PowerSpectra& spectra, double noise) {
    const RegularizedCurve regularized(spectra, 2);
    const CurvePoint best = searchStrength(regularized, std::nullopt).best;
    const double noiseOfQuotient = noiseShare(regularized, best.parameter, noise, all);
    const double signal = std::sqrt(spectra.energy() / spectra.length);
    const bool idle = noise < 1e-3 * signal ? regularisingIsIdle(regularized, best.parameter, noise)
                                            : best.kept > 0.95 * spectra.degrees();
    if (noiseOfQuotient < 0.1 && idle) {
        return {MethodAdvice::Method::division,
                fmt::format("the noise makes {:.2g} % of the quotient of the spectra, less than "
                            "regularisation might blur",
                            100.0 * noiseOfQuotient)};
    }
    const std::string against = reasonAgainstIteration(symmetry, spectra);
    if (against.empty()) {
        return {MethodAdvice::Method::iteration, "the kernel is a smooth symmetric peak"};
    }
    if (iterationIsQuieter(regularized, best, noise)) {
        return {MethodAdvice::Method::iteration,
                "regularised division would pass on more noise, at low frequencies that the kernel "
                "leaves weak"};
    }
    return {MethodAdvice::Method::regularized, against};
}
