#include "workbench/batch/checkBatch.h"
#include "workbench/commands/BatchCommand.h"
#include "workbench/commands/Command.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/system/inParallel.h"
#include "workbench/terminal/texts.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <memory>
#include <string>

static constexpr const char* convolveExamples =
    "  fendra batch convolve takes --kernel room.wav --pad --into wet\n"
    "  fendra batch convolve 'takes/*.wav' --kernel 'irs/{name}.wav' --pad --into wet\n"
    "  fendra batch convolve takes --recursive --kernel room.wav --pad --into wet --format flac\n";
static constexpr const char* deconvolveExamples =
    "  fendra batch deconvolve scans --kernel peak.csv --auto --into sharp\n"
    "  fendra batch deconvolve scans --kernel peak.csv --choose tried.json --into sharp\n"
    "  parallel fendra batch deconvolve scans --kernel peak.csv --auto --into sharp --shard {}/8 "
    "::: 1 2 3 4 5 6 7 8\n";

static CLI::App& addFolding(CLI::App& batch, const std::string& name, std::int32_t direction,
                            const char* examples) {
    CLI::App& command = *batch.add_subcommand(
        name, "Do to each of many files what fendra " + name +
                  " does to one.\n"
                  "Given again, the command goes on where it was interrupted or killed, and does "
                  "anew whatever failed or has changed. A file that fails does not stop the "
                  "others.");
    command.footer(examples);
    const auto folding = std::make_shared<BatchCommand>(name, direction);
    folding->addTo(command);
    command.callback([folding] { folding->run(); });
    return command;
}

static void check(const std::string& folder) {
    const BatchCheck checked =
        checkBatch(folder, coreCount(), [](const std::string& name, const std::string& fault) {
            fmt::print("{} {}\n", printable(name), printable(fault));
        });
    fmt::print("{}: {} of {} results are as their manifest tells\n", printable(folder),
               checked.files - checked.faulty, checked.files);
    if (checked.faulty > 0) {
        throw Failure(
            fmt::format("{} of {} results are not as their manifest tells; give the "
                        "command of the batch again",
                        checked.faulty, checked.files));
    }
}

static void addBatch(CLI::App& program) {
    CLI::App& command = *program.add_subcommand(
        "batch",
        "Convolve or deconvolve many files in the same way.\n"
        "Results go into one folder, with a manifest, batch.jsonl, that has a line of JSON for "
        "each file as it ends: its inputs and its result with their SHA-256, settings, seconds, "
        "warnings, and what failed. The last line of a name holds.");
    command.footer(
        "  fendra batch convolve takes --kernel room.wav --pad --into wet\n"
        "  fendra batch deconvolve scans --kernel peak.csv --auto --into sharp\n"
        "  fendra batch --check wet\n");
    const auto folder = std::make_shared<std::string>();
    CLI::Option* const checks =
        command
            .add_option("--check", *folder,
                        "read all results of a batch again, and compare them with its manifest")
            ->type_name("FOLDER");
    addFolding(command, "convolve", FendraSettings::convolution, convolveExamples).excludes(checks);
    addFolding(command, "deconvolve", FendraSettings::deconvolution, deconvolveExamples)
        .excludes(checks);
    command.require_subcommand(0, 1);
    command.callback([&command, folder] {
        if (!folder->empty()) {
            check(*folder);
        } else if (command.get_subcommands().empty()) {
            throw CLI::RequiredError("convolve, deconvolve or --check FOLDER");
        }
    });
}

extern const Command batchCommand = {addBatch};
