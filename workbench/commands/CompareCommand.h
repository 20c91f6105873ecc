#pragma once

#include "workbench/commands/PageOptions.h"
#include "workbench/commands/PlotOptions.h"
#include "workbench/jobs/CompareJob.h"
#include "workbench/methods/Setting.h"
#include "workbench/terminal/InputOptions.h"
#include "workbench/terminal/JobsOption.h"
#include "workbench/terminal/SettingOptions.h"
#include "workbench/terminal/TreatmentOptions.h"

#include <string>
#include <vector>

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
    [[nodiscard]] ModuleLibrary library() const { return input.library(); }
    [[nodiscard]] CompareJob job() const;

private:
    [[nodiscard]] std::string words(const CompareJob& job) const;
    [[nodiscard]] std::string wordsWithoutOutput(const CompareJob& job) const;

    std::string signal, kernel, truth, output;
    std::vector<std::string> methods = Setting::named("method").wordList();
    SettingOptions options{FendraSettings::deconvolution};
    TreatmentOptions treatments;
    double rate = 0.0;  // 0: from the files
    bool pad = false, replace = false, json = false, quiet = false;
    InputOptions input;
    PageOptions page;
    PlotOptions plot;
    JobsOption jobs;
};
