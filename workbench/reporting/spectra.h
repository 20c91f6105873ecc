#pragma once

#include <cstddef>
#include <vector>

// The magnitude of the spectrum of N samples, in their units,
//     |X(w)| = |sum_n x[n] exp(-i w n)|,      w = 2 pi j / length,   j = 0 .. length/2.
// Of a long signal it is the root of the mean over stretches that are spread evenly over it, with
// the window h, and as high as if each were the whole:
//     |X(w)|^2 = N / sum h^2  mean over stretches of |sum_n h[n] x[first + n] exp(-i w n)|^2
// (P. D. Welch, "The use of fast Fourier transform for the estimation of power spectra", IEEE
// Trans. Audio Electroacoust. 15 (1967) 70-73).
struct MagnitudeSpectrum {
    std::size_t length = 0;     // of a stretch
    std::size_t stretches = 1;  // 1: the whole signal, without a window
    std::vector<double> magnitudes;
};

// Signals of more samples are averaged, over at most so many stretches of that length.
constexpr std::size_t longestWhole = 1 << 15, stretchLength = 1 << 14, mostStretches = 64;

// Of one sample or more. NaN and infinity count as 0. std::bad_alloc.
MagnitudeSpectrum magnitudeSpectrum(const std::vector<double>& samples);
