#pragma once

#include <cstdint>

// The settings of the module, as a host stores them with the signal graph. Fields stand in the
// order of the stored record; the values are those of a new module.
struct FendraSettings {
    static constexpr std::int32_t perBlock = 0, perPacket = 1;
    static constexpr std::int32_t convolution = 0, deconvolution = 1;
    static constexpr std::int32_t timeDomain = 0,
                                  frequencyDomain = 1;  // division under deconvolution
    static constexpr std::int32_t vanCittert = 2, pseudoInverse = 3;

    std::int32_t executionMode = perBlock;
    std::int32_t method = frequencyDomain;
    std::int32_t direction = convolution;
    double convergence = 1.0;
    std::uint32_t maxIterations = 100;
    std::int32_t abortAtError = 0;
    double errorValue = 0.01;
    std::int32_t abortAtMinError = 1;
    std::int32_t scaling = 4;

    // Whether the module reports two numbers beside its signal, and asks for signals of equal
    // length.
    [[nodiscard]] bool reportsNumbers() const {
        return direction == deconvolution && (method == vanCittert || method == pseudoInverse);
    }
};
