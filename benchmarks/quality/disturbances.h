#pragma once

#include <cstdint>
#include <vector>

// Noise, the same in each run of the program.

// Root of the mean of the squares.
double rootMeanSquare(const std::vector<double>& samples);

// With white noise of that share of the signal's root mean square.
std::vector<double> withWhiteNoise(std::vector<double> signal, double level, std::uint64_t seed);

// With autoregressive noise v[n] = a v[n - 1] + e[n] of that share.
std::vector<double> withColouredNoise(std::vector<double> signal, double level, double a,
                                      std::uint64_t seed);

// Counted: scaled to a maximum of so many counts, from a Poisson distribution each, and scaled
// back.
std::vector<double> counted(std::vector<double> signal, double peak, std::uint64_t seed);
