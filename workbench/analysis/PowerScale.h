#pragma once

#include <vector>

// The power of two by which an operand is divided, so that what the methods make of it stays in the
// range of doubles, and its results are multiplied.
struct PowerScale {
    // 0, so nothing moves, where the largest |x| lies between 2^-200 and 2^200: a method multiplies
    // four spectral values at most, each up to N <= 2^31 times as large, so by 2^924 at most. Else
    // that which brings the largest |x| to between 1 and 2. Samples that are not finite do not
    // count, and all zero gives 0.
    static PowerScale of(const std::vector<double>& samples);

    int exponent = 0;
};

// The samples times 2^exponent: exact, except where a value leaves the range of doubles, or loses
// digits below 2^-1022.
std::vector<double> scaled(const std::vector<double>& samples, int exponent);
