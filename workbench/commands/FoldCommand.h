#pragma once

#include "workbench/commands/InputOptions.h"
#include "workbench/module/ModuleRun.h"

#include <cstdint>
#include <string>

class B_BasisModule;
namespace CLI {
class App;
}

// What convolve and deconvolve have in common: two signals go through the module, and what comes
// out is written, with a record of how it was made.
struct FoldCommand {
    std::string name;  // of the subcommand
    std::string first, second;
    std::string method;       // "time", "spectral"
    std::string methodWords;  // as they stand on the command line: "--domain time"
    std::string graph;        // stored, which then has settings, method and per; empty: none
    FendraSettings settings;
    std::string per = "block";
    std::int64_t block = 0;  // 0: the whole signal is one block
    bool pad = false;
    std::string output = "-", encoding = "auto", truth;
    double rate = 0.0;  // 0: from the files
    bool replace = false, json = false;
    InputOptions input;

    // Adds everything but the method to a subcommand.
    void addOptions(CLI::App& command, const std::string& firstName, const std::string& secondName);
    // Adds --graph, which stands alone for all options that set the module; these come before.
    void addGraph(CLI::App& command);

    // Failure where the run fails, CLI::ParseError where options do not go together.
    void run();

    // The command line that gives the same result again.
    [[nodiscard]] std::string commandLine() const;

private:
    void takeGraph(B_BasisModule& module);
};
