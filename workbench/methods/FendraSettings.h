#pragma once

#include <cstdint>

// The settings of Fendra, as a host stores them with the signal graph. Fields stand in the order of
// the stored record; the values are those of a new module. What a field may hold, and its name for
// people, stands in the table of settings (Setting.h).
struct FendraSettings {
    static constexpr std::int32_t perBlock = 0, perPacket = 1;
    static constexpr std::int32_t convolution = 0, deconvolution = 1;
    static constexpr std::int32_t timeDomain = 0,
                                  frequencyDomain = 1;  // division under deconvolution
    static constexpr std::int32_t vanCittert = 2, pseudoInverse = 3;
    static constexpr std::int32_t regularized = -1;  // made of three runs; no module holds it

    std::int32_t executionMode = perBlock;
    std::int32_t method = frequencyDomain;
    std::int32_t direction = convolution;
    double convergence = 1.0;
    std::uint32_t maxIterations = 100;
    std::int32_t abortAtError = 0;
    double errorValue = 0.01;
    std::int32_t abortAtMinError = 1;
    std::int32_t scaling = 4;
};

// Those of them that are chosen from the signals, before the module runs.
struct LeftToData {
    bool method = false;
    bool convergence = false;
    bool maxIterations = false;

    [[nodiscard]] bool any() const { return method || convergence || maxIterations; }
};
