#pragma once

#include <cstdint>

// What the user chooses, with the values of a new module. The settings dialog offers the first two
// methods for convolution and all but the first for deconvolution; a file may hold any numbers, so
// the fields are numbers, and the names below those of the numbers that mean something.
struct FoldSettings {
    enum ExecutionMode : std::int32_t { perBlock, perPacket };
    enum Direction : std::int32_t { convolution, deconvolution };
    enum Method : std::int32_t { timeDomain, frequencyDomain, vanCittert, pseudoInverse };

    std::int32_t executionMode = perBlock;
    std::int32_t direction = convolution;  // any number but convolution deconvolves
    std::int32_t method = frequencyDomain;

    // The iteration
    std::uint32_t maxIterations = 100;
    double convergence = 1.0;
    std::int32_t abortAtError = 0;  // 1: stop at errorValue
    double errorValue = 0.01;
    std::int32_t abortAtMinError = 1;  // 1: stop at the smallest error

    // The filter
    std::int32_t scaling = 4;  // position in the dialog's list, 0 to 4; 4: none

    // Whether the method gives two numbers beside its signal, on outputs 1 and 2.
    bool givesScalars() const {
        return direction != convolution && (method == vanCittert || method == pseudoInverse);
    }
    // The outputs that the ports then need.
    int outputs() const { return givesScalars() ? 3 : 1; }
};
