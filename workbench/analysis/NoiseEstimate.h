#pragma once

#include "workbench/analysis/PowerSpectra.h"

#include <cstddef>
#include <optional>

// Standard deviation of the noise in a sample of the signal, before any oversampling.
struct NoiseEstimate {
    double sigma = 0.0;    // in units of the samples
    bool isBound = false;  // taken from a residual: noise, and what the model does not reach
};

// The noise of a signal, taken as white, with N degrees of freedom and r-fold oversampling.
//     Bins that the kernel leaves empty, |H| < 1e-3 max |H|, if there are 16 of N: noise of the
//     variance s^2 has there a power of exponential distribution with the mean r^2 N s^2, so the
//     median r^2 N s^2 ln 2, which a few bins of signal do not move.
//     Otherwise the smaller of two bounds. Regularised division of order 2, at its best strength by
//     robust generalised cross-validation, leaves s^2 = E / (r (N - 2 A + B)), in terms of
//     AnswerCurve. And white noise is in every part of the spectrum: of all stretches of an eighth
//     of it, overlapping by half, the weakest has at most the mean power r^2 N s^2 (1 - 1.5 / n),
//     where n^2 is the number of its bins: some 15 such means scatter by 1/n, and the least of them
//     is that far below their mean. The first bound is wide where a smooth answer does not suit the
//     signal, the second one where the signal reaches all frequencies.
NoiseEstimate estimateNoise(const PowerSpectra& spectra);

// Bins that the kernel leaves empty, as many as it takes to tell the noise by them.
constexpr std::size_t fewestEmptyBins = 16;

// Standard deviation of the noise in a sample of the quotient Y/H, by that of the bins that the
// kernel leaves empty: s sqrt(mean of 1/|H|^2), over the bins where H is not 0. None if there are
// too few of them.
std::optional<double> noiseOfQuotient(const PowerSpectra& spectra);
