#pragma once

#include <cstdint>
#include <vector>

// Signals that tests are made of.

using Signal = std::vector<double>;

// n samples, spread evenly over [-1, 1), the same on every machine.
Signal noise(int n, std::uint64_t seed);

// c[n] = sum_k b[k] a[(n - k) mod L], the terms added in ascending k. a is the longer operand.
Signal periodicFold(const Signal& a, const Signal& b);

// The same one sample late, the last sample wrapped to the front: the time domain of FoldEngine.
Signal laggingFold(const Signal& a, const Signal& b);

// The bits of the samples: signed zeros differ, a NaN equals itself.
std::vector<std::uint64_t> bits(const Signal& samples);

// Bound on the rounding error, relative to the largest value, of a few transforms of length n: the
// twiddle recurrence of a power of two adds up one rounding per step.
double transformBound(int n);
