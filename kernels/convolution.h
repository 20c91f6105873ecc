#pragma once

// The sums of a convolution: for n = 0 .. L-1, k ascending from a sum of 0.0,
//     result[n] = sum_(k < S) w[S - 1 + n - k] b[k]
// w holds L + S - 1 samples or more, apart from result.
void convolve(const double* w, const double* b, int L, int S, double* result);

namespace plain {
void convolve(const double* w, const double* b, int L, int S, double* result);
}
