#pragma once

#include "workbench/commands/PageOptions.h"
#include "workbench/commands/PlotOptions.h"
#include "workbench/jobs/CompareJob.h"
#include "workbench/terminal/CompareOptions.h"
#include "workbench/terminal/JobsOption.h"

#include <string>

namespace CLI {
class App;
}

// All methods on the same data.
class CompareCommand {
public:
    // Adds arguments and options to a subcommand.
    void addTo(CLI::App& command);

    // Failure where a method fails, CLI::ParseError where options do not go together.
    void run() const;

    // What was given, as a job, for whoever runs it otherwise.
    [[nodiscard]] ModuleLibrary library() const { return options.library(); }
    [[nodiscard]] CompareJob job() const;

private:
    [[nodiscard]] std::string words(const CompareJob& job) const;
    [[nodiscard]] std::string wordsWithoutOutput(const CompareJob& job) const;

    std::string signal, kernel, truth, output;
    CompareOptions options;
    bool replace = false, json = false, quiet = false;
    PageOptions page;
    PlotOptions plot;
    JobsOption jobs;
};
