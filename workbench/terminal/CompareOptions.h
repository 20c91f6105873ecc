#pragma once

#include "workbench/jobs/CompareJob.h"
#include "workbench/methods/Setting.h"
#include "workbench/terminal/InputOptions.h"
#include "workbench/terminal/SettingOptions.h"
#include "workbench/terminal/TreatmentOptions.h"

#include <string>
#include <vector>

namespace CLI {
class App;
}

// The options that say which methods are compared and how, whatever signals these are: words of the
// command line become a job.
class CompareOptions {
public:
    void addTo(CLI::App& command);
    // Without those that say how files are read, and which module runs.
    void addWithoutFilesTo(CLI::App& command);

    [[nodiscard]] ModuleLibrary library() const { return input.library(); }
    [[nodiscard]] ReadOptions reading() const { return input.reading(); }

    // A job without its signals. CLI::ParseError where options do not go together.
    [[nodiscard]] CompareJob job() const;

    // The options as a command line takes them, each with a blank before it.
    [[nodiscard]] std::string words(const CompareJob& job) const;

private:
    void addComparingTo(CLI::App& command);

    std::vector<std::string> methods = Setting::named("method").wordList();
    SettingOptions options{FendraSettings::deconvolution};
    TreatmentOptions treatments;
    double rate = 0.0;  // 0: from the files
    bool pad = false;
    InputOptions input;
};
