#pragma once

#include <vector>

// Sine whose frequency grows exponentially from f1 to f2 in the time T, to play into a room or a
// device and to deconvolve the recording by. With L = ln(f2 / f1),
//     x(t) = sin(2 pi f1 (T / L) (exp(t L / T) - 1))      frequency f1 exp(t L / T)
// (A. Farina, "Simultaneous measurement of impulse response and distortion with a swept-sine
// technique", 108th AES Convention, Paris 2000, preprint 5093).
//   from, to   f1 and f2 in Hz, 0 < f1 < f2 <= rate / 2
//   seconds    T; there are T rate samples, rounded, at t = 0, 1 / rate, ...
//   fade       seconds at either end in which the sine rises from 0 and falls to 0 by half a
//   cosine;
//              0 to T / 2
//   returns    samples from -1 to 1. std::bad_alloc.
std::vector<double> exponentialSweep(double from, double to, double seconds, double rate,
                                     double fade);
