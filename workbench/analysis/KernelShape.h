#pragma once

#include <cstddef>
#include <vector>

// The number of samples after which |h| stays below 1e-6 of its maximum; 0 where all are zero.
std::size_t supportOf(const std::vector<double>& kernel);

// Where a kernel without an axis may have its zero.
struct KernelPeak {
    std::size_t index = 0;     // c, of the largest |h|, the first of equal ones
    double correlation = 0.0;  // with the mirror image about c, at most 1
    double centroid = 0.0;     // sum n |h[n]| / sum |h[n]|, in samples
};

// With a correlation from here on the kernel is a symmetric peak, whose zero is its maximum. The
// response of a detector to a line has 0.998, an onset with a slow decay or a room far less.
constexpr double symmetricFrom = 0.95;

// The kernel h about its maximum c, nothing taken off and zero outside its samples:
//     correlation = sum_d h[c + d] h[c - d] / sum_n h[n]^2
// All 0 where the kernel is all zero.
KernelPeak peakOf(const std::vector<double>& kernel);
