#pragma once

#include "workbench/batch/BatchRun.h"
#include "workbench/commands/SlurmOptions.h"
#include "workbench/terminal/FoldOptions.h"
#include "workbench/terminal/JobsOption.h"

#include <string>
#include <utility>

namespace CLI {
class App;
}
class BatchPainter;

// A command that folds many files as convolve or deconvolve folds one.
class BatchCommand {
public:
    BatchCommand(std::string commandName, std::int32_t direction)
        : name(commandName), options(std::move(commandName), direction) {}

    // Adds arguments and options to a subcommand.
    void addTo(CLI::App& command);

    // Failure where the run or any file fails, CLI::ParseError where options do not go together.
    void run() const;

private:
    void addFiles(CLI::App& command);
    void addWay(CLI::App& command);
    // What is done to each file. bands: results that are columns get bounds.
    struct Way {
        FoldJob job;
        bool bands = false;
    };
    [[nodiscard]] Way chosenWay(const ModuleLibrary& library, const Batch& batch) const;
    [[nodiscard]] Way recordedWay(const ModuleLibrary& library, const FoldJob& given) const;
    [[nodiscard]] Way frozenByFirst(const ModuleLibrary& library, const Way& given,
                                    const Batch& batch) const;
    [[nodiscard]] Batch::Task task(const Way& way, const Batch& batch, const BatchItem& item,
                                   const std::string& kernelFile) const;
    [[nodiscard]] std::string settingsText(const Way& way, const ModuleLibrary& library) const;
    [[nodiscard]] BatchProgress runOnCluster(const Batch& batch, const ModuleLibrary& library,
                                             BatchPainter& painter) const;
    [[nodiscard]] BatchProgress runHere(Batch& batch, const ModuleLibrary& library,
                                        BatchPainter& painter) const;
    void tell(const Batch& batch, const BatchProgress& progress) const;

    std::string name;
    SignalSelection selection;
    std::string kernel, format, shard, choose = "first";
    FoldOptions options;
    OutputOptions output{.file = "-"};
    JobsOption jobs;
    SlurmOptions slurm;
};
