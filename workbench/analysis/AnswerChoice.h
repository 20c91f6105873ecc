#pragma once

#include "workbench/analysis/IterationCurve.h"
#include "workbench/analysis/NoiseModel.h"
#include "workbench/analysis/RegularizedCurve.h"

#include <cstdint>
#include <optional>
#include <vector>

// A strength of a method, chosen or given, and what it makes of the signal; letters as in
// AnswerCurve.
struct AnswerChoice {
    static constexpr std::int64_t mostSteps = 20000;  // that are searched

    double parameter = 0.0;       // number of steps k, or strength l
    double first = 0.0;           // of the range that was searched
    double last = 0.0;            // 0: no search
    double explained = 0.0;       // 1 - E / (energy of the signal), at most 1
    double kept = 0.0;            // A, degrees of freedom
    double degrees = 0.0;         // N
    double noise = 0.0;           // standard deviation of a sample of the original signal
    bool noiseGiven = false;      // by the caller; otherwise estimateNoise
    bool noiseIsBound = false;    // noise, and what the model does not reach
    double predictedError = 0.0;  // E
    // Kolmogorov distance between the cumulated periodogram of the residual, over the power of the
    // noise where that is known, and a straight line, times the root of the number of bins: over
    // those of the bins 0 .. N/2 that the method leaves to the noise, |phi| < 0.1. Above 2 the
    // noise is not as it was taken to be, by default white, or signal is left. None below 20 such
    // bins.
    std::optional<double> whiteness;
    std::vector<CurvePoint> curve;  // all that the search looked at, by rising parameter

    [[nodiscard]] bool atEdge() const {
        return last > 0.0 && (parameter == first || parameter == last);
    }
    // Share of the degrees of freedom that the residual keeps. Where it is small, the residual
    // says nothing about the noise.
    [[nodiscard]] double residualFreedom() const { return 1.0 - kept / degrees; }
};

// The number of steps, from 1 to mostSteps, at which the criterion of the curve is smallest, among
// those up to which the error falls; 0 if there is none. noise: of as many samples as the signal
// has degrees of freedom; none if it is not known.
AnswerChoice chooseSteps(const IterationCurve& curve, const std::optional<NoiseModel>& noise);

// A given number of steps.
AnswerChoice judgeSteps(const IterationCurve& curve, std::int64_t steps,
                        const std::optional<NoiseModel>& noise);

// The strength, of three digits from 1e-14 to 1e8, at which the criterion is smallest.
AnswerChoice chooseStrength(const RegularizedCurve& curve, const std::optional<NoiseModel>& noise);

// A given strength. estimates: the noise, where it is not known, is wanted; that is a search.
AnswerChoice judgeStrength(const RegularizedCurve& curve, double strength,
                           const std::optional<NoiseModel>& noise, bool estimates = true);
