#pragma once

#include <cstdint>

// What the user chooses, with the values of a new module. The settings dialog offers method 0 and 1
// for convolution and 1 to 3 for deconvolution; a file may hold any combination.
struct FoldSettings {
    std::int32_t executionMode = 0;  // 0: per block, 1: per packet
    std::int32_t direction = 0;      // 0: convolution, 1: deconvolution
    // 0: time domain, 1: frequency domain, 2: van Cittert iteration, 3: pseudo-inverse filter
    std::int32_t method = 1;

    // The iteration
    std::uint32_t maxIterations = 100;
    double convergence = 1.0;
    std::int32_t abortAtError = 0;  // 1: stop at errorValue
    double errorValue = 0.01;
    std::int32_t abortAtMinError = 1;  // 1: stop at the smallest error

    // The filter
    std::int32_t scaling = 4;  // position in the dialog's list, 0 to 4; 4: none

    // Whether the method gives two numbers beside its signal, on outputs 1 and 2.
    bool givesScalars() const { return direction != 0 && (method == 2 || method == 3); }
};
