#pragma once

#include "workbench/system/inParallel.h"

#include <string>

namespace CLI {
class App;
}

// In how many threads a command works. What comes out does not depend on it, so no command line in
// a record holds it.
struct JobsOption {
    int threads = coreCount();

    // Adds --jobs. parts: what runs side by side, "channels and blocks".
    void addTo(CLI::App& command, const std::string& parts);
};
