#pragma once

#include "kernels/InstructionSet.h"

namespace kernels {

// Two convolutions. The terms of each sum are added one by one, k ascending, to 0.0.

// For n = 0 .. L-1
//     result[n] = sum_(k < S) w[S - 1 + n - k] b[k]
// w holds L + S - 1 samples or more, apart from result.
void convolve(const double* w, const double* b, int L, int S, double* result);

// For n = 0 .. N-1, of signals that are zero before index 0,
//     result[n] = sum_(k <= n) x[n - k] y[k]
// x and y hold N samples each, apart from result.
void convolveCausal(const double* x, const double* y, int N, double* result);

// The instruction set that a convolution of so many multiply-adds runs on.
InstructionSet convolutionForm(double multiplyAdds);

namespace plain {
void convolve(const double* w, const double* b, int L, int S, double* result);
void convolveCausal(const double* x, const double* y, int N, double* result);
}  // namespace plain

}  // namespace kernels
