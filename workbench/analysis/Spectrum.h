#pragma once

#include <cstddef>
#include <vector>

// The spectrum of a real signal: with w = 2 pi j / N,
//     re[j] + i im[j] = sum_n x[n] exp(-i w n)      j = 0 .. N-1
struct Spectrum {
    std::vector<double> re, im;
};

// Of samples with zeros appended up to a length of 1 to 2^29. std::bad_alloc.
Spectrum spectrumOf(const std::vector<double>& samples, std::size_t length);

// The real part of (1/N) sum_j X[j] exp(i w n), n = 0 .. N-1. std::bad_alloc.
std::vector<double> samplesOf(Spectrum spectrum);

// Periodic convolution by spectra, at the length N of the first; the second is not longer:
//     c[n] = sum_k second[k] first[(n - k) mod N]
std::vector<double> periodicConvolution(const std::vector<double>& first,
                                        const std::vector<double>& second);
