#include "workbench/treatment/Choice.h"

#include "workbench/analysis/AnswerChoice.h"
#include "workbench/analysis/KernelShape.h"
#include "workbench/analysis/MethodAdvice.h"
#include "workbench/analysis/NoiseEstimate.h"
#include "workbench/analysis/PowerScale.h"
#include "workbench/analysis/RegularizedCurve.h"
#include "workbench/analysis/RegularizedOperands.h"
#include "workbench/messages/Failure.h"
#include "workbench/methods/Method.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>
#include <utility>

PreparationPlan planOf(const FendraSettings& settings, const Treatment& treatment,
                       std::int64_t kernelZero) {
    PreparationPlan plan;
    const bool wantsRoom = treatment.room || treatment.frequencies.has_value();
    plan.ends = treatment.ends.value_or(wantsRoom ? Ends::zero : Ends::periodic);
    const bool iterates = settings.method == FendraSettings::vanCittert;
    plan.oversampling = iterates ? std::max(1, treatment.oversampling) : 1;
    plan.kernelZero = kernelZero;
    plan.lag = Method::selectedBy(settings)->lag;
    plan.moves = treatment.origin.kind != Origin::Kind::none;
    plan.centred = plan.moves && settings.method == FendraSettings::pseudoInverse;
    return plan;
}

std::vector<double> tapsOf(const Treatment& treatment, double rate, std::size_t length) {
    if (!treatment.frequencies) {
        return penaltyTaps(treatment.order, length);
    }
    if (rate == 0.0) {
        throw Failure(
            "--frequencies: the signals have no sampling rate; give it with --rate, or leave "
            "--frequencies out");
    }
    return bandTaps(treatment.frequencies->from, treatment.frequencies->to, rate, length);
}

namespace {

// One choice under way. Samples are scaled as for the module.
class Choosing {
public:
    Choosing(const Question& asked, const FendraSettings& given, const LeftToData& leftToData,
             const Treatment& wanted);

    Choice choose();

private:
    [[nodiscard]] bool wantsRecord() const;
    void chooseMethod();
    void chooseEnds();
    void chooseOversampling();
    [[nodiscard]] PowerSpectra spectraOf(const PreparationPlan& plan) const;
    [[nodiscard]] PowerSpectra searchedSpectra(const PowerSpectra& prepared) const;
    void judge();
    void judgeIteration(const PowerSpectra& spectra);
    void judgeDivision(const PowerSpectra& spectra);
    void judgeExact(const PowerSpectra& spectra);
    void keep(const AnswerChoice& answer);
    void weigh(const AnswerChoice& answer);
    void refuseUnexplained(const AnswerChoice& answer) const;
    void setNoise(const AnswerChoice* answer);
    void settle();
    [[nodiscard]] double sigmaOfSignal() const;
    [[nodiscard]] std::optional<NoiseModel> knownNoise(std::size_t length) const;
    [[nodiscard]] bool choosesStrength() const;
    [[nodiscard]] std::string criterionText() const;

    const Question& question;
    LeftToData left;
    int exponent;  // of the power of two that the signal is divided by
    std::vector<double> signal, kernel;
    std::optional<PowerSpectra> plain;  // of the signals as they are; made where it is needed
    Choice choice;
    ChoiceRecord record;
};

}  // namespace

static constexpr double periodicRatio = 2e-3;

static double rootMeanSquare(const std::vector<double>& samples) {
    return std::sqrt(std::inner_product(samples.begin(), samples.end(), samples.begin(), 0.0) /
                     static_cast<double>(samples.size()));
}

Choosing::Choosing(const Question& asked, const FendraSettings& given, const LeftToData& leftToData,
                   const Treatment& wanted)
    : question(asked),
      left(leftToData),
      exponent(PowerScale::of(question.signal).exponent),
      signal(scaled(question.signal, -exponent)),
      kernel(scaled(question.kernel, -PowerScale::of(question.kernel).exponent)) {
    choice.settings = given;
    choice.treatment = wanted;
    record.noise = 0.0;
}

bool Choosing::choosesStrength() const {
    const Treatment& treatment = choice.treatment;
    return choice.settings.method == FendraSettings::regularized
               ? !treatment.strength && !treatment.frequencies
               : left.maxIterations;
}

bool Choosing::wantsRecord() const {
    return left.any() || choice.treatment.automatic || choice.treatment.uncertainty ||
           choice.treatment.curve || choice.treatment.oversampling == 0 ||
           choice.settings.method == FendraSettings::regularized;
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
    const double noise = std::max(sigmaOfSignal(), periodicRatio * rootMeanSquare(signal));
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
    bool diverges = false;
    for (std::size_t j = 0; j < plain->kernel.size(); ++j) {
        const double gain = plain->kernel[j] / plain->largestGain();
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

std::string Choosing::criterionText() const {
    return choice.treatment.noise.kind == KnownNoise::Kind::estimated
               ? "at which robust GCV is smallest"
               : "at which the error expected from the known noise is smallest";
}

Choice Choosing::choose() {
    const bool iteration = choice.settings.method == FendraSettings::vanCittert;
    if ((left.convergence || left.maxIterations) && !left.method && !iteration) {
        throw Failure(
            "convergence and max-iterations are left to the data, but only the iteration has them; "
            "choose method=van-cittert");
    }
    constexpr std::size_t longestByTheWay = std::size_t{1} << 16U;
    if (wantsRecord() || signal.size() <= longestByTheWay) {
        const bool answers = wantsRecord();
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
        chooseEnds();
        if (answers) {
            judge();
        }
    }
    return choice;
}

PowerSpectra Choosing::spectraOf(const PreparationPlan& plan) const {
    const Preparation preparation(question.kernel, question.signal.size(), exponent, plan);
    const Operands operands = preparation.operands(question.signal);
    return {operands.signal, operands.kernel, plan.oversampling};
}

// What a strength is searched in. Reflected ends are not what the kernel makes of any signal, and
// the search would smooth until they fit; bridged ones leave a residual that is noise.
PowerSpectra Choosing::searchedSpectra(const PowerSpectra& prepared) const {
    PreparationPlan plan = planOf(choice.settings, choice.treatment, question.kernelZero);
    if (plan.ends != Ends::odd) {
        return prepared;
    }
    plan.ends = Ends::bridge;
    return spectraOf(plan);
}

void Choosing::judge() {
    const std::int32_t method = choice.settings.method;
    if (method != FendraSettings::vanCittert) {
        choice.treatment.oversampling = 1;  // there is no lag
    } else if (choice.treatment.oversampling == 0) {
        chooseOversampling();
    }
    const PowerSpectra spectra =
        spectraOf(planOf(choice.settings, choice.treatment, question.kernelZero));
    record.method = Method::selectedBy(choice.settings)->word;
    if (method == FendraSettings::vanCittert) {
        judgeIteration(spectra);
    } else if (method == FendraSettings::regularized) {
        judgeDivision(spectra);
    } else {
        judgeExact(spectra);
    }
    choice.record = record;
    settle();
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

// The error that the module reports is the last one that fell, where it stops at the minimum.
void Choosing::judgeIteration(const PowerSpectra& spectra) {
    FendraSettings& settings = choice.settings;
    if (left.convergence) {
        settings.convergence = 1.0 / spectra.largestGain();
        record.reasons.push_back(fmt::format(
            "convergence {:.6g}, 1 over the kernel's largest squared gain", settings.convergence));
    }
    choice.curve.emplace(spectra, settings.convergence);
    const IterationCurve searched(searchedSpectra(spectra), settings.convergence);
    const std::optional<NoiseModel> noise =
        knownNoise(static_cast<std::size_t>(searched.spectra().degrees()));
    const std::int64_t asked = std::int64_t{settings.maxIterations} - 1;
    const AnswerChoice answer =
        left.maxIterations
            ? chooseSteps(searched, noise)
            : judgeSteps(searched,
                         settings.abortAtMinError != 0 ? searched.lastFalling(asked) : asked,
                         noise);
    const auto steps = static_cast<std::int64_t>(answer.parameter);
    if (left.maxIterations) {
        settings.maxIterations = static_cast<std::uint32_t>(steps + 1);
        record.reasons.push_back(
            fmt::format("{} step{}, {}", steps, steps == 1 ? "" : "s", criterionText()));
    }
    record.steps = steps;
    record.oversampling = choice.treatment.oversampling;
    record.convergence = settings.convergence;
    const std::int64_t ran =
        settings.abortAtMinError != 0 ? choice.curve->lastFalling(steps) : steps;
    record.predictedError =
        std::ldexp(choice.curve->at(static_cast<double>(ran)).error, 2 * exponent);
    if (left.maxIterations || settings.maxIterations > 1) {
        refuseUnexplained(answer);
    }
    keep(answer);
}

void Choosing::judgeDivision(const PowerSpectra& spectra) {
    Treatment& treatment = choice.treatment;
    const PowerSpectra searched = searchedSpectra(spectra);
    const auto length = static_cast<std::size_t>(searched.length);
    const RegularizedCurve curve(searched,
                                 penaltySpectrum(tapsOf(treatment, question.rate, length)));
    const std::optional<NoiseModel> noise = knownNoise(length);
    const bool searches = choosesStrength();
    const AnswerChoice answer = searches
                                    ? chooseStrength(curve, noise)
                                    : judgeStrength(curve, treatment.strength.value_or(1.0), noise);
    if (searches) {
        record.reasons.push_back(fmt::format("strength {}, {}", answer.parameter, criterionText()));
    }
    treatment.strength = answer.parameter;
    record.strength = answer.parameter;
    refuseUnexplained(answer);
    keep(answer);
}

// Division and the filter have no strength, and leave no residual to speak of.
void Choosing::judgeExact(const PowerSpectra& spectra) {
    record.kept = record.degrees = spectra.degrees();
    const std::optional<NoiseModel> known = knownNoise(signal.size());
    if (known) {
        record.noise = std::ldexp(known->sigma(), exponent);
    } else {
        const NoiseEstimate estimate = estimateNoise(*plain);
        record.noise = std::ldexp(estimate.sigma, exponent);
        record.noiseIsBound = estimate.isBound;
    }
    setNoise(nullptr);
}

void Choosing::refuseUnexplained(const AnswerChoice& answer) const {
    constexpr double least = 0.05;
    if (answer.explained >= least) {
        return;
    }
    const bool iteration = choice.settings.method == FendraSettings::vanCittert;
    throw Failure(fmt::format(
        "{}: the {} explains {:.2g} % of its energy by this kernel, too little for a result; {}",
        question.name, iteration ? "iteration" : "regularized division", 100.0 * answer.explained,
        !iteration ? "try another kernel"
        : left.convergence || !left.maxIterations
            ? "try --method regularized, or another kernel"
            : "try --convergence auto, or --method regularized"));
}

void Choosing::keep(const AnswerChoice& answer) {
    record.rule = answer.last == 0.0                                           ? ""
                  : choice.treatment.noise.kind == KnownNoise::Kind::estimated ? "robust GCV"
                                                                               : "known noise";
    record.explained = answer.explained;
    record.kept = answer.kept;
    record.degrees = answer.degrees;
    record.noise = std::ldexp(answer.noise, exponent);
    record.noiseIsBound = answer.noiseIsBound;
    record.whiteness = answer.whiteness;
    record.curve = answer.curve;
    for (CurvePoint& point : record.curve) {
        point.error = std::ldexp(point.error, 2 * exponent);
        point.criterion = std::ldexp(point.criterion, 2 * exponent);
    }
    weigh(answer);
    setNoise(&answer);
}

// What speaks against the answer.
void Choosing::weigh(const AnswerChoice& answer) {
    const bool iteration = choice.settings.method == FendraSettings::vanCittert;
    if (answer.atEdge()) {
        choice.warnings.push_back(fmt::format(
            "the choice lies at an edge of the range, from {:.6g} to {:.6g}{}: no balance of noise "
            "and detail was found inside it; compare with other {}",
            answer.first, answer.last, iteration ? " steps" : "",
            iteration ? "--max-iterations" : "--strength"));
    }
    constexpr double half = 0.5;
    if (answer.explained < half) {
        choice.warnings.push_back(fmt::format(
            "the {} explains {:.2g} % of the signal's energy by the kernel; the rest is noise, or "
            "the kernel does not fit",
            iteration ? "iteration" : "regularized division", 100.0 * answer.explained));
    }
    // Of a signal without noise the rounding is left, whose colour says nothing.
    constexpr double coloured = 2.0, noticeable = 1e-7;
    const bool noisy = answer.noise > noticeable * rootMeanSquare(signal);
    if (noisy && answer.last > 0.0 && answer.whiteness.value_or(0.0) > coloured) {
        choice.warnings.push_back(fmt::format(
            "the noise is not what it was taken for: its spectrum is uneven ({:.2g}, where white "
            "noise stays below 2), and the strength may be wrong; name {} quiet stretch of the "
            "signal with --noise-from FROM:TO",
            *answer.whiteness,
            choice.treatment.noise.kind == KnownNoise::Kind::stretch ? "another" : "a"));
    }
}

// A band rests on the noise, and that on the residual, unless it was given: as it was, to the last
// bit.
void Choosing::setNoise(const AnswerChoice* answer) {
    if (choice.treatment.noise.kind == KnownNoise::Kind::sigma) {
        record.noise = choice.treatment.noise.sigma;
    }
    if (!choice.treatment.uncertainty) {
        return;
    }
    constexpr double leastFreedom = 0.05;
    const bool given = choice.treatment.noise.kind != KnownNoise::Kind::estimated;
    const double freedom = answer == nullptr ? 0.0 : answer->residualFreedom();
    if (given || freedom >= leastFreedom) {
        choice.noise = record.noise;
    } else {
        choice.warnings.emplace_back(
            "there is no band of uncertainty: the residual keeps too little to tell the noise by; "
            "give it with --noise SIGMA, or a quiet stretch with --noise-from FROM:TO");
    }
}

Choice chooseFor(const Question& question, const FendraSettings& given, const LeftToData& left,
                 const Treatment& wanted) {
    return Choosing(question, given, left, wanted).choose();
}

std::optional<std::string> Choice::contradictedBy(double lastError, double loopCount) const {
    const std::int64_t steps = static_cast<std::int64_t>(loopCount) - 1;
    if (!curve || curve->predicts(lastError, steps)) {
        return std::nullopt;
    }
    return fmt::format(
        "internal error: after {} steps the module reports the last error {:.9g}, and {:.9g} was "
        "predicted; do not rely on the choice, and report this",
        steps, lastError, curve->at(static_cast<double>(steps)).error);
}
