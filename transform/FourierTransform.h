#pragma once

#include "transform/HartleyTransform.h"

#include <cstdint>

// Discrete Fourier transform of a complex signal of any length, in place. A signal is two arrays of
// n doubles, real and imaginary parts, owned by the caller. With x[j] = re[j] + i im[j],
//     sign -1   X[k] =         sum_j x[j] exp(-2 pi i j k / n)
//     sign +1   X[k] = (1 / n) sum_j x[j] exp(+2 pi i j k / n)
// so that a transform with -1 followed by one with +1 restores the signal, at every length.
//
// A power of two goes to a radix-2 transform, any other length becomes a convolution with a chirp
// at a power of two, M, of at least 2 n (L. I. Bluestein, "A linear filtering approach to the
// computation of discrete Fourier transform", IEEE Trans. Audio Electroacoust. 18 (1970) 451-455),
// which is computed by Hartley transforms.
//
// Nothing is kept between calls: objects may work in several threads at once. Who transforms more
// than once at a length keeps a FourierPlan.
class FourierTransform {
public:
    virtual ~FourierTransform() = default;

    // The transform at any length; n below 1 leaves the arrays alone. A power of two needs no
    // memory, another length that of a ChirpPlan. Throws std::bad_alloc, with the
    // arrays as they were, if that memory cannot be allocated, or if n is above 2^29 and not a
    // power of two (M would not fit a 32-bit length).
    void transform(double* re, double* im, int n, int sign);

    // The smallest power of two that is not below n; 1 for any n below 2.
    static std::uint32_t nextPowerOfTwo(int n);

    // The chirp-z path of transform, at any n from 1 on. With the chirp w[j] = exp(i sign pi j^2 /
    // n), j k = (j^2 + k^2 - (k - j)^2) / 2 turns the sum into X[k] = w[k] sum_j (x[j] w[j])
    // conj(w[k - j]).
    void chirpTransform(double* re, double* im, int n, int sign);

    // The chirp w[k] for k = 0 .. n - 1, then zeros up to index m - 1.
    static void makeChirp(double* chirpRe, double* chirpIm, int n, int m, int sign);

    // Continues a chirp of n samples up to index m - 1: w[j + n] = (-1)^n w[j].
    static void extendChirp(double* re, double* im, int n, int m);

    // data becomes its circular convolution with fixed, at length 2^logM. fixed becomes its
    // spectrum, in the sense of hartleyComplexTransform with +1.
    void circularFold(double* fixedRe, double* fixedIm, double* dataRe, double* dataIm, int logM);

    // The transform at a power of two n, not tested, from 1 to 2^30; sign is -1.0 or +1.0, and
    // +1.0 divides by n. The twiddles of a stage run by recurrence from one sine and one cosine,
    // so the error grows with n: 1e-15 at 2^8, near 1e-11 at 2^20 (relative, root mean square).
    // Returns n.
    static int radix2Transform(double* re, double* im, int n, double sign);

    // A complex transform made of two Hartley transforms, for a power of two n, not tested:
    //     sense 0 or more   X[k] =         sum_j x[j] exp(+2 pi i j k / n)
    //     sense below 0     X[k] = (1 / n) sum_j x[j] exp(-2 pi i j k / n)
    // Here the negative code normalises, unlike in transform.
    void hartleyComplexTransform(double* re, double* im, int n, int sense);

private:
    HartleyTransform hartleyTransform;
};
