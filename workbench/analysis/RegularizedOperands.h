#pragma once

#include <cstddef>
#include <vector>

// Regularised division, made of three runs of the module. With signal y and kernel h, their spectra
// Y and H at N samples, m = max |H|^2, the strength l and a penalty P,
//     X = Y conj(H) / (|H|^2 + l m P)
// minimises sum |Y - H X|^2 + l m sum P |X|^2 (A. N. Tikhonov, Soviet Math. Dokl. 4 (1963)
// 1035-1038), and is the quotient of two convolutions with the reversed kernel h~:
//     1. a = y convolved with h~      2. r = h convolved with h~      3. a / (r + l m p)
// all periodic, with p the N taps of P: its inverse transform, real and even.

// The kernel about index 0: h~[n] = h[-n mod N], with the spectrum conj(H).
std::vector<double> reversed(const std::vector<double>& kernel);

// Taps of the order 0, an impulse with P = 1, which keeps the result small, or of the order 2,
//     [1, -4, 6, -4, 1] / 16 at the lags -2 .. 2, and 1e-12 at lag 0: P = sin(w / 2)^4 + 1e-12,
// which keeps it smooth; the impulse leaves no frequency without a penalty. length: N, 1 or more.
std::vector<double> penaltyTaps(int order, std::size_t length);

// Taps of a weight P that is 1e-6 in the band from .. to, its bounds included, and 1 outside.
//   from, to, rate   in one unit, as Hz, or the reciprocal of the axis's; frequency j is j rate / N
//   Failure          no frequency of the N samples lies in the band. std::bad_alloc.
std::vector<double> bandTaps(double from, double to, double rate, std::size_t length);

// P of the taps, for the bins 0 .. N/2. std::bad_alloc.
std::vector<double> penaltySpectrum(const std::vector<double>& taps);

// r + l m p, the kernel of the third run.
//   autocorrelation   r, N samples
//   strength          l, above 0
//   largestGain       m, in squared units of the kernel
//   taps              p, N samples
std::vector<double> regularizedKernel(const std::vector<double>& autocorrelation, double strength,
                                      double largestGain, const std::vector<double>& taps);
