#include "workbench/treatment/Choosing.h"

#include "workbench/analysis/KernelShape.h"
#include "workbench/analysis/MethodAdvice.h"
#include "workbench/analysis/NoiseEstimate.h"
#include "workbench/analysis/PowerScale.h"
#include "workbench/messages/Failure.h"
#include "workbench/methods/Method.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

Choosing::Choosing(const Question& asked, const FendraSettings& given, const LeftToData& leftToData,
                   const Treatment& wanted)
    : question(asked),
      left(leftToData),
      exponent(PowerScale::of(question.signal).exponent),
      signal(scaled(question.signal, -exponent)),
      kernel(scaled(question.kernel, -PowerScale::of(question.kernel).exponent)) {
    choice.settings = given;
    choice.treatment = wanted;
}

double Choosing::rootMeanSquare() const {
    return std::sqrt(std::inner_product(signal.begin(), signal.end(), signal.begin(), 0.0) /
                     static_cast<double>(signal.size()));
}

double Choosing::sigmaOfSignal() const {
    const std::optional<NoiseModel> known = knownNoise(signal.size());
    return known ? known->sigma() : estimateNoise(*plain).sigma;
}

std::optional<NoiseModel> Choosing::knownNoise(std::size_t length) const {
    const auto samples = static_cast<int>(length);
    const KnownNoise& noise = choice.treatment.noise;
    switch (noise.kind) {
        case KnownNoise::Kind::sigma:
            return NoiseModel::white(std::ldexp(noise.sigma, -exponent), samples);
        case KnownNoise::Kind::counts: {
            const double counted = NoiseModel::ofCounts(question.signal, samples).sigma();
            return NoiseModel::white(std::ldexp(counted, -exponent), samples);
        }
        case KnownNoise::Kind::stretch:
            return NoiseModel::ofStretch(scaled(question.quiet, -exponent), samples);
        default:
            return std::nullopt;
    }
}

static std::int32_t codeOf(MethodAdvice::Method method) {
    switch (method) {
        case MethodAdvice::Method::iteration:
            return FendraSettings::vanCittert;
        case MethodAdvice::Method::division:
            return FendraSettings::frequencyDomain;
        default:
            return FendraSettings::regularized;
    }
}

void Choosing::chooseMethod() {
    const MethodAdvice advice = adviseMethod(peakOf(kernel).correlation, *plain, sigmaOfSignal());
    FendraSettings& settings = choice.settings;
    settings.method = codeOf(advice.method);
    record.reasons.push_back(
        fmt::format("{}, since {}", Method::selectedBy(settings)->word, advice.reason));
}

// Whether hardly anything of a kernel lies in the upper half of its spectrum. A slow response or a
// broad peak is smooth, a room is not.
static bool isSmooth(const PowerSpectra& spectra) {
    constexpr double little = 0.05;
    double all = 0.0, upper = 0.0;
    for (std::size_t j = 0; j < spectra.kernel.size(); ++j) {
        const double power = spectra.multiplicity(j) * spectra.kernel[j];
        all += power;
        upper += spectra.frequency(j) > std::numbers::pi / 2.0 ? power : 0.0;
    }
    return upper < little * all;
}

// Where the ends are alike, or meet as smoothly as other neighbours, periodic ones are as good as
// any.
void Choosing::chooseEnds() {
    Treatment& treatment = choice.treatment;
    const bool open = !treatment.ends && !treatment.room && !treatment.frequencies;
    constexpr double least = 2e-3;  // of the signal: a hundredth is no step to speak of
    const double noise = std::max(sigmaOfSignal(), least * rootMeanSquare());
    constexpr std::size_t fewest = 32;
    if (!open || signal.size() < fewest || !endsDiffer(signal, noise)) {
        return;
    }
    if (!treatment.automatic) {
        choice.warnings.emplace_back(
            "the first and the last sample of the signal differ by more than five times the noise, "
            "and it is taken as periodic: the result rings at its ends; try --ends odd, or "
            "--ends zero for a room");
        return;
    }
    if (!meetsRoughly(signal)) {
        return;
    }
    const bool smooth = isSmooth(*plain);
    treatment.ends = smooth ? Ends::odd : Ends::zero;
    record.reasons.push_back(fmt::format(
        "{} ends: the first and the last sample differ by more than five times the noise",
        smooth ? "odd" : "zero"));
}

// The lag makes the iteration diverge where 2 cos w < c |H|^2, with c |H|^2 at most 1: an
// interpolation by 4 keeps w below pi / 4. What the kernel leaves empty cannot grow.
void Choosing::chooseOversampling() {
    constexpr int enough = 4;
    constexpr double empty = 1e-6;
    const double largest = plain->largestGain();
    bool diverges = false;
    for (std::size_t j = 0; j < plain->kernel.size(); ++j) {
        const double gain = plain->kernel[j] / largest;
        diverges = diverges || (gain > empty && 2.0 * std::cos(plain->frequency(j)) < gain);
    }
    choice.treatment.oversampling = diverges ? enough : 1;
    if (diverges) {
        record.reasons.push_back(fmt::format(
            "oversampled {} times: the lag of the time domain would make the iteration diverge at "
            "high frequencies",
            enough));
    }
}

Choice Choosing::choose() {
    const bool iteration = choice.settings.method == FendraSettings::vanCittert;
    if ((left.convergence || left.maxIterations) && !left.method && !iteration) {
        throw Failure(
            "convergence and max-iterations are left to the data, but only the iteration has them; "
            "choose method=van-cittert");
    }
    constexpr std::size_t longestByTheWay = std::size_t{1} << 16U;
    const bool answers = isChosen(choice.settings, left, choice.treatment);
    if (answers || (choice.treatment.warns && signal.size() <= longestByTheWay)) {
        try {
            plain.emplace(signal, kernel);
        } catch (const Failure&) {
            if (answers) {
                throw;
            }
            return choice;  // the run itself says what is wrong
        }
        if (left.method) {
            chooseMethod();
        }
        if (choice.treatment.automatic || choice.treatment.warns) {
            chooseEnds();
        }
        if (answers) {
            judge();
        }
    }
    return choice;
}

// What was found takes the place of what was left, so that another run finds nothing. Periodic ends
// that are given let lengths differ, as an automatic treatment and a chosen oversampling do.
void Choosing::settle() {
    Treatment& treatment = choice.treatment;
    const bool differ = treatment.automatic || signal.size() != kernel.size();
    if (differ && !treatment.room && !treatment.frequencies && !treatment.ends) {
        treatment.ends = Ends::periodic;
    }
    treatment.automatic = treatment.curve = false;
    treatment.uncertainty = choice.noise.has_value();
    if (choice.noise && treatment.noise.kind == KnownNoise::Kind::estimated) {
        treatment.noise = {KnownNoise::Kind::sigma, *choice.noise, {}};
    }
}
