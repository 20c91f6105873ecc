#include "workbench/analysis/NoiseEstimate.h"
#include "workbench/analysis/RegularizedCurve.h"
#include "workbench/analysis/RegularizedOperands.h"
#include "workbench/messages/Failure.h"
#include "workbench/methods/Method.h"
#include "workbench/treatment/Choosing.h"

#include <fmt/format.h>

#include <cmath>

PowerSpectra Choosing::spectraOf(const PreparationPlan& plan) const {
    const Preparation preparation(question.kernel, question.signal.size(), exponent, plan);
    const Operands operands = preparation.operands(question.signal);
    return {operands.signal, operands.kernel, plan.oversampling};
}

// What a strength is searched in. Reflected ends are not what the kernel makes of any signal, and
// the search would smooth until they fit; bridged ones leave a residual that is noise.
PowerSpectra Choosing::searchedSpectra(const PowerSpectra& prepared) const {
    PreparationPlan plan =
        PreparationPlan::of(choice.settings, choice.treatment, question.kernelZero);
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
        spectraOf(PreparationPlan::of(choice.settings, choice.treatment, question.kernelZero));
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
    const bool estimates = treatment.warns || treatment.uncertainty;
    const AnswerChoice answer =
        searches ? chooseStrength(curve, noise)
                 : judgeStrength(curve, treatment.strength.value_or(1.0), noise, estimates);
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
    const bool noisy = answer.noise > noticeable * rootMeanSquare();
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

bool Choosing::choosesStrength() const {
    const Treatment& treatment = choice.treatment;
    return choice.settings.method == FendraSettings::regularized
               ? !treatment.strength && !treatment.frequencies
               : left.maxIterations;
}

std::string Choosing::criterionText() const {
    return choice.treatment.noise.kind == KnownNoise::Kind::estimated
               ? "at which robust GCV is smallest"
               : "at which the error expected from the known noise is smallest";
}
