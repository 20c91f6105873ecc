#pragma once

#include <string>

namespace CLI {
class App;
}

// The options that say which sweep is made; what they mean stands at exponentialSweep.
struct SweepOptions {
    std::string frequencies;
    double seconds = 0.0, rate = 0.0, fade = 0.01;

    void addTo(CLI::App& command);

    // CLI::ValidationError where they do not go together.
    void check() const;
    // The options as a command line takes them, each with a blank before it.
    [[nodiscard]] std::string words() const;
};
