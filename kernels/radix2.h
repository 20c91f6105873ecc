#pragma once

namespace kernels {

// The transform of n complex numbers re[j] + i im[j], in place, n a power of two from 1 to 2^30:
//     X[k] = sum_j x[j] exp(sign 2 pi i j k / n)
// and at sign 1.0 divided by n. Bit reversal comes first, then log2 n stages of butterflies (J. W.
// Cooley, J. W. Tukey, Math. Comput. 19 (1965) 297-301). The twiddles of a stage run by recurrence
// from one sine and one cosine. Allocates nothing.
void radix2(double* re, double* im, int n, double sign);

namespace plain {
void radix2(double* re, double* im, int n, double sign);
}

}  // namespace kernels
