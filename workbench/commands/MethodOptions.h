#pragma once

#include "workbench/methods/FendraSettings.h"

#include <cstdint>
#include <string>
#include <vector>

namespace CLI {
class App;
}

// How to deconvolve, as the command line says it: the methods and what can be set on them.
struct MethodOptions {
    static const std::vector<std::string>&
    methods();  // "spectral", "van-cittert", "pseudo-inverse"

    std::string method = "spectral";
    double convergence = 1.0;
    std::uint32_t maxIterations = 100;
    double errorValue = -1.0;  // below 0: none
    bool stopAtMinimum = true;
    std::string scaling = "none";

    void addMethod(CLI::App& command);
    void addSettings(CLI::App& command);

    // Settings of the module for one of the methods.
    [[nodiscard]] FendraSettings settings(const std::string& chosen) const;
    // The options of the method, whole, as a command line takes them.
    [[nodiscard]] std::string words() const;
};
