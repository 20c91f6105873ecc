#pragma once

#include <cstddef>
#include <vector>

// The lag of one sample in the module's time domain makes its iteration diverge at each frequency w
// with 2 cos w < c |H|^2. Between finer samples the lag is shorter: interpolated fourfold, a signal
// has no frequencies above w = pi / 4, and with c |H|^2 at most 1 the iteration converges for every
// kernel.

// A signal and a kernel that the module is run on.
struct Operands {
    std::vector<double> signal, kernel;
};

// N samples to r N of the same periodic function of time, whose spectrum has zeros between the
// frequencies that were there, so that each r-th sample is the original, to rounding. At an even N
// the bin of half the rate is halved into two, of both signs.
//   samples    1 or more
//   factor     r, 1 or more; 1 gives the samples themselves, to the last bit
//   Failure    r N above 2^29. std::bad_alloc.
std::vector<double> interpolated(const std::vector<double>& samples, int factor);

// Both operands, of equal lengths, interpolated; the kernel is divided by the factor, since its sum
// has r times as many terms, and the signal is moved to later samples by one of the fine ones,
// which takes the place of the lag: what the time domain's iteration makes of these operands stands
// where the signal did. A factor of 1 gives both as they are, to the last bit, and leaves the lag.
Operands oversampled(const Operands& operands, int factor);

// Samples 0, r, 2 r, ...
std::vector<double> everyNth(const std::vector<double>& samples, int factor);
