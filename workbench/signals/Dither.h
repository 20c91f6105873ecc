#pragma once

#include <random>

// Noise that is added to a sample, in units of the last bit, before it is rounded to an integer.
// It is the difference of two even numbers from [0, 1), with the triangular density 1 - |x| from -1
// to 1. Then neither the mean nor the variance of the whole error, 1/4 of the last bit squared,
// depends on the signal: what is below a bit survives, and no distortion comes with it
// (S. P. Lipshitz, R. A. Wannamaker, J. Vanderkooy, "Quantization and dither: a theoretical
// survey", J. Audio Eng. Soc. 40 (1992) 355-375). The sequence is the same in every run and on
// every system.
class Dither {
public:
    double next();

private:
    std::mt19937_64 random{20};
};
