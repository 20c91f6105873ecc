#pragma once

#include "workbench/signals/SignalWriter.h"

#include <string>

namespace CLI {
class App;
}

// Where a command writes its result: options that several commands have.
struct OutputOptions {
    std::string file, encoding = "auto";
    bool replace = false, dither = false, quiet = false;

    // Adds -o, --force, --encoding, --dither and --quiet.
    void addTo(CLI::App& command, const char* about);
    void addWithoutFileTo(CLI::App& command);  // where the command names the files itself

    [[nodiscard]] SignalTarget target() const;
    // The options as a command line takes them, each with a blank before it; without --force and
    // --quiet, which do not change the result.
    [[nodiscard]] std::string words() const;
};

// What stands for --force.
constexpr const char* forceText =
    "replace the output if it exists, also where it is read-only; hard links to the old file keep "
    "the old contents";

// A word as the shell takes it.
std::string quoted(const std::string& word);
