#pragma once

#include "workbench/commands/PageOptions.h"
#include "workbench/commands/PlotOptions.h"
#include "workbench/terminal/FoldOptions.h"
#include "workbench/terminal/JobsOption.h"

#include <memory>
#include <string>

namespace CLI {
class App;
}

// What convolve and deconvolve have in common: the words of the command line become a job, and the
// record of its run becomes text or JSON.
class FoldCommand {
public:
    FoldCommand(std::string commandName, std::int32_t direction)
        : options(std::move(commandName), direction) {}

    // Adds arguments and options to a subcommand.
    void addTo(CLI::App& command, const std::string& firstName, const std::string& secondName);

    // Failure where the run fails, CLI::ParseError where options do not go together.
    void run() const;

    // What was given, as a job, for whoever runs it otherwise. The command outlives the job.
    [[nodiscard]] ModuleLibrary library() const { return options.library(); }
    [[nodiscard]] FoldJob job(const ModuleLibrary& library) const;
    [[nodiscard]] SignalTarget target() const;
    // The options by which the files are read.
    [[nodiscard]] std::string readingWords() const { return options.readingWords(); }

private:
    void addOutput(CLI::App& command);
    void checkStreams() const;
    void checkKeeping(const FoldJob& job) const;
    void tell(const RunRecord& record) const;
    // What pictures of a run are made from.
    struct Shown {
        std::shared_ptr<const Signal> signal, kernel;
        Outcome outcome;
    };
    void show(Shown& shown, PlotFile* picture, PageFile* pageFile) const;

    std::string first, second, truth, curve;
    FoldOptions options;
    bool json = false, keepPartial = false;
    OutputOptions output{.file = "-"};
    PageOptions page;
    PlotOptions plot;
    JobsOption jobs;
};
