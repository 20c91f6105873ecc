#pragma once

namespace kernels {

// The fast Hartley transform, radix 4, in place: with cas x = cos x + sin x,
//     H[k] = sum_j f[j] cas(2 pi j k / n)
// and with normalise not 0 divided by n. n is a power of two from 1 to 2^30.
void hartley(double* f, int n, int normalise);

namespace plain {
void hartley(double* f, int n, int normalise);
}

}  // namespace kernels
