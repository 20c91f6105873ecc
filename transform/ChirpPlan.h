#pragma once

#include <memory>

// The chirp-z transform of one length, made ready: all that depends on the length alone, and the
// memory it works in. Runs of the same plan give the bits of FourierTransform::chirpTransform, one
// after the other; in two threads at once each needs a plan of its own.
//
// The convolution runs at M, the smallest power of two that is at least 2 n. There is no choice: a
// Hartley transform takes powers of two only, and nothing shorter holds the samples n to 2 n - 1
// unwrapped.
//
// One chirp and one spectrum serve both signs. The chirp of the other sign is the complex
// conjugate, bit by bit, as negation commutes with rounding. For the same reason its spectrum is
// the conjugate in reversed order: the two computations differ in the signs of zeros at most, and
// these show in zeros only. Where the spectrum has a zero, as at length 5 or 1120, the other one is
// computed as well.
//
// A real signal takes the work of a complex one. Its product with the chirp is complex, and of the
// way back, whose imaginary part may not be wanted, both Hartley transforms go into the real part.
class ChirpPlan {
public:
    // length: n, from 1 on. Keeps 4.75 M and 2 n doubles, or 6.75 M where a second spectrum is
    // needed. Throws std::bad_alloc if they cannot be allocated, or if n is above 2^29 (M would not
    // fit a 32-bit length).
    explicit ChirpPlan(int length);

    // The transform of n samples, as FourierTransform::transform defines it. Allocates nothing.
    void transform(double* re, double* im, int sign);

private:
    struct Arrays {
        double *re = nullptr, *im = nullptr;
    };

    void makeSpectrum(const Arrays& result, int sign);

    int n, m;
    std::unique_ptr<double[]> memory, memoryOfOther;
    Arrays work, chirp, spectrum, other;  // chirp and spectrum of sign -1; spectrum of sign +1
    double* tables;
};
