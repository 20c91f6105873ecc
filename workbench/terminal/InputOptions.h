#pragma once

#include "workbench/files/signalFiles.h"
#include "workbench/module/ModuleLibrary.h"
#include "workbench/terminal/OutputOptions.h"
#include "workbench/terminal/TextInputOptions.h"

#include <string>
#include <vector>

namespace CLI {
class App;
}

// How files are read, and which module runs: options that several commands have.
struct InputOptions {
    std::string axis;                  // a column of text files, "none", or empty: sought
    std::vector<std::string> columns;  // of text files, that are channels; empty: all others
    bool noAxis = false, allowNonfinite = false, lossy = false;
    TextInputOptions text;
    std::string module;  // empty: the one beside the program

    void addTo(CLI::App& command);
    void addReadingTo(CLI::App& command);    // where no module runs
    void addModuleTo(CLI::App& command);     // alone, where no signals are read
    void addNonfiniteTo(CLI::App& command);  // alone, where signals are in memory
    void addLossyTo(CLI::App& command);

    [[nodiscard]] ReadOptions reading() const {
        return {.allowNonfinite = allowNonfinite,
                .axis = noAxis ? "none" : axis,
                .columns = columns,
                .lossy = lossy,
                .text = text.reading()};
    }
    // Failure as ModuleLibrary.
    [[nodiscard]] ModuleLibrary library() const;
    // The options as a command line takes them, each with a blank before it.
    [[nodiscard]] std::string words() const;
};

// What stands for the file of a signal in the help of a command.
constexpr const char* signalFileText = "audio file, array or columns of text; - is standard input";

// What stands for --rate.
constexpr const char* rateText = "sampling rate of signals whose files give none";

// What stands for the file of a stored graph.
constexpr const char* storedGraphText = "stored graph; - is standard input";
