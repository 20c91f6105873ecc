#pragma once

#include "tests/support/Signal.h"

#include <complex>
#include <vector>

// The transforms once more, as plainly as they can be written.

using LongSpectrum = std::vector<std::complex<long double>>;

// sum_j x[j] exp(sign 2 pi i j k / n) for every k, by the sum itself, in long double.
LongSpectrum definingSum(const LongSpectrum& x, int sign);

// The same at any length in n log n steps: a power of two by bisection, another length by a chirp,
// every twiddle from a sine and cosine of its own. Good to about 1e-18.
LongSpectrum longTransform(const LongSpectrum& x, int sign);

// The complex signal of two arrays of doubles.
LongSpectrum widen(const Signal& re, const Signal& im);

// Loops in double whose every operation, in its order, is what the fast forms have to reproduce bit
// for bit.
void plainHartley(Signal& f, bool normalise);
void plainHartleyComplex(Signal& re, Signal& im, int sense);
