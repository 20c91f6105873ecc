#pragma once

#include "workbench/commands/InputOptions.h"
#include "workbench/jobs/FoldJob.h"
#include "workbench/terminal/SettingOptions.h"

#include <string>
#include <vector>

namespace CLI {
class App;
}

// The words of --encoding.
std::vector<std::string> encodingWords();

// What convolve and deconvolve have in common: the words of the command line become a job, and the
// record of its run becomes text or JSON.
class FoldCommand {
public:
    FoldCommand(std::string commandName, std::int32_t direction)
        : name(std::move(commandName)), options(direction) {}

    // Adds arguments and options to a subcommand.
    void addTo(CLI::App& command, const std::string& firstName, const std::string& secondName);

    // Failure where the run fails, CLI::ParseError where options do not go together.
    void run() const;

private:
    void addCutting(CLI::App& command);
    void addOutput(CLI::App& command);
    void checkStreams() const;
    [[nodiscard]] FendraSettings settings(const ModuleLibrary& library) const;
    [[nodiscard]] std::string commandLine(const FendraSettings& used, const LeftToData& left) const;

    std::string name;  // of the subcommand
    std::string first, second, graph, truth;
    SettingOptions options;
    Cutting cutting;
    std::string output = "-", encoding = "auto";
    double rate = 0.0;  // 0: from the files
    bool replace = false, json = false, quiet = false;
    InputOptions input;
};
