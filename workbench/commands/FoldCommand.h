#pragma once

#include "workbench/jobs/FoldJob.h"
#include "workbench/terminal/InputOptions.h"
#include "workbench/terminal/OutputOptions.h"
#include "workbench/terminal/SettingOptions.h"
#include "workbench/terminal/TreatmentOptions.h"

#include <string>

namespace CLI {
class App;
}

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
    [[nodiscard]] FoldJob job(const ModuleLibrary& library) const;
    [[nodiscard]] FendraSettings settings(const ModuleLibrary& library) const;
    [[nodiscard]] LeftToData leftToData() const;
    [[nodiscard]] std::string commandLine(const FendraSettings& used, const LeftToData& left,
                                          const Treatment& treatment) const;

    std::string name;  // of the subcommand
    std::string first, second, graph, truth, curve;
    SettingOptions options;
    TreatmentOptions treatments;
    Cutting cutting;
    double rate = 0.0;  // 0: from the files
    bool json = false;
    OutputOptions output{.file = "-"};
    InputOptions input;
};
