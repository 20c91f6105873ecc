#pragma once

#include "workbench/jobs/FoldJob.h"
#include "workbench/terminal/InputOptions.h"
#include "workbench/terminal/OutputOptions.h"
#include "workbench/terminal/SettingOptions.h"
#include "workbench/terminal/TreatmentOptions.h"

#include <cstdint>
#include <string>
#include <utility>

namespace CLI {
class App;
}

// The options that say how two signals are folded, whatever files these are: words of the command
// line become a job.
class FoldOptions {
public:
    FoldOptions(std::string commandName, std::int32_t direction)
        : name(std::move(commandName)), options(direction) {}

    void addTo(CLI::App& command);
    // Without those that say how files are read, and which module runs: a program has its signals
    // in memory, and its module open.
    void addWithoutFilesTo(CLI::App& command);

    [[nodiscard]] bool deconvolves() const;
    [[nodiscard]] ModuleLibrary library() const { return input.library(); }
    [[nodiscard]] ReadOptions reading() const { return input.reading(); }
    [[nodiscard]] std::string readingWords() const { return input.words(); }
    [[nodiscard]] const std::string& graphFile() const { return graph; }

    // A job without its signals. Failure if a stored graph cannot be used, CLI::ParseError where
    // options do not go together.
    [[nodiscard]] FoldJob job(const ModuleLibrary& library) const;

    // Its command and options as a command line takes them.
    [[nodiscard]] std::string words(const FoldJob& job) const;

    // Gives it the command line that does the same as the job on these signals: without --force,
    // --truth, --jobs and --json, which do not change the result. The options outlive the job.
    void setWords(FoldJob& job, const std::string& first, const std::string& second,
                  const std::string& outputWords = "") const;

    // Gives it the files that it reads, with these options, and its words. Failure if the name of
    // the output does not give a format.
    void setFiles(FoldJob& job, const std::string& first, const std::string& second,
                  const ReadOptions& reading, const OutputOptions& output) const;

private:
    void addFolding(CLI::App& command);
    void addCutting(CLI::App& command);
    void addScaling(CLI::App& command);
    [[nodiscard]] FendraSettings settings(const ModuleLibrary& library) const;
    [[nodiscard]] LeftToData leftToData() const;
    [[nodiscard]] std::string words(const FendraSettings& used, const LeftToData& left,
                                    const Treatment& treatment, const Cutting& cut) const;

    std::string name;   // of the subcommand
    std::string graph;  // empty: none
    SettingOptions options;
    TreatmentOptions treatments;
    Cutting cutting;
    double rate = 0.0;  // 0: from the files
    std::string gain;   // empty: none
    InputOptions input;
};
