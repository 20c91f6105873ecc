#include "workbench/commands/FoldCommand.h"

#include "workbench/messages/Failure.h"
#include "workbench/methods/Setting.h"
#include "workbench/module/FendraModule.h"
#include "workbench/module/StoredGraph.h"
#include "workbench/terminal/Progress.h"
#include "workbench/terminal/values.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <limits>

std::vector<std::string> encodingWords() {
    std::vector<std::string> words;
    for (const EncodingRow& row : EncodingRow::all()) {
        words.emplace_back(row.word);
    }
    return words;
}

void FoldCommand::addTo(CLI::App& command, const std::string& firstName,
                        const std::string& secondName) {
    command.add_option(firstName, first, signalFileText)->required()->type_name("FILE");
    command.add_option(secondName, second, signalFileText)->required()->type_name("FILE");
    options.addTo(command);
    CLI::Option* const stored =
        command
            .add_option("--graph", graph,
                        "run with the settings that a stored graph holds; see fendra settings")
            ->type_name("FILE")
            ->group("Method");
    options.exclude(*stored);
    addCutting(command);
    input.addTo(command);
    command.add_option("--rate", rate, "sampling rate for text that has no time column")
        ->check(positiveNumber("sampling rate"))
        ->type_name("HZ")
        ->group("Signals");
    addOutput(command);
}

void FoldCommand::addCutting(CLI::App& command) {
    command
        .add_option("--block", cutting.block,
                    "cut both signals into blocks of N samples; a signal of a single block is used "
                    "for all blocks of the other. Without it the whole signal is one block")
        ->check(countUpTo(std::numeric_limits<std::int32_t>::max(), "block length"))
        ->type_name("N")
        ->group("Blocks");
    const bool convolves = options.settings().direction == FendraSettings::convolution;
    command
        .add_flag(
            "--pad", cutting.pad,
            convolves
                ? "append zeros so that nothing wraps round: the linear result, longer by the "
                  "other signal (with --block: each block's own)"
                : "append zeros, so that nothing wraps round; for a method that needs signals of "
                  "equal length, to the shorter one until it is as long as the other")
        ->group("Blocks");
}

void FoldCommand::addOutput(CLI::App& command) {
    command
        .add_option(
            "-o,--output", output,
            "write the result here; the ending chooses the format. Default: text on standard "
            "output")
        ->type_name("FILE")
        ->group("Result");
    command.add_flag("--force", replace, forceText)->group("Result");
    command
        .add_option("--encoding", encoding,
                    "samples of an audio output; auto is float64, for FLAC pcm24")
        ->check(choice(encodingWords()))
        ->type_name("")
        ->capture_default_str()
        ->group("Result");
    command
        .add_option("--truth", truth,
                    "report the relative error of the result against a known signal")
        ->type_name("FILE")
        ->group("Result");
    command
        .add_flag("--json", json,
                  "print the record of the run as JSON on standard output; needs -o")
        ->group("Result");
    command.add_flag("-q,--quiet", quiet, "print nothing about the run, except errors")
        ->group("Result");
}

void FoldCommand::checkStreams() const {
    if (json && output == "-") {
        throw CLI::ValidationError(
            "--json", "it prints on standard output; send the result elsewhere with -o FILE");
    }
    const std::array<std::string, 4> files = {first, second, truth, graph};
    if (std::count(files.begin(), files.end(), "-") > 1) {
        throw CLI::ValidationError("-", "standard input serves one file only");
    }
}

// A graph may hold what the command line would not set, and another direction.
FendraSettings FoldCommand::settings(const ModuleLibrary& library) const {
    const FendraSettings given = options.settings();
    if (graph.empty()) {
        options.refuseIgnored({given});
        return given;
    }
    const ModuleObject module = library.makeModule();
    requireFendra(*module);
    loadGraph(*module, graph);
    FendraSettings stored = settingsOf(*module);
    if (refusedSetting(stored).empty() && stored.direction != given.direction) {
        throw Failure(fmt::format(
            "{} is set to {}; run it with fendra {}", SourceName(graph).shown,
            Setting::named("direction").text(stored),
            stored.direction == FendraSettings::convolution ? "convolve" : "deconvolve"));
    }
    return stored;
}

// Without --force, --truth and --json, which do not change the result.
std::string FoldCommand::commandLine(const FendraSettings& used, const LeftToData& left) const {
    std::string line =
        fmt::format("fendra {} {} {} {}", name, quoted(first), quoted(second),
                    graph.empty() ? optionWords(used, left) : "--graph " + quoted(graph));
    const auto add = [&line](bool given, const std::string& words) {
        line += given ? " " + words : "";
    };
    add(cutting.block != 0, fmt::format("--block {}", cutting.block));
    add(cutting.pad, "--pad");
    add(encoding != "auto", "--encoding " + encoding);
    add(rate != 0.0, fmt::format("--rate {}", rate));
    line += input.words();
    add(output != "-", "-o " + quoted(output));
    return line;
}

// Where the result itself goes to standard output, what is said about it goes to standard error.
void FoldCommand::run() const {
    checkStreams();
    const ReadOptions reading = input.reading();
    const ModuleLibrary library = input.library();
    FoldJob job;
    job.first = fileSource(first, reading);
    job.second = fileSource(second, reading);
    job.settings = settings(library);
    job.leftToData = options.leftToData();
    job.cutting = cutting;
    job.rate = rate;
    job.allowNonfinite = input.allowNonfinite;
    job.words = commandLine(job.settings, job.leftToData);
    job.wordsWith = [this](const FendraSettings& found) { return commandLine(found, {}); };
    job.graph = graph.empty() ? "" : SourceName(graph).shown;
    if (!truth.empty()) {
        job.truth = fileSource(truth, reading);
    }
    const SignalTarget target{SourceName::ofOutput(output), replace,
                              EncodingRow::named(encoding)->encoding};
    Progress progress("", quiet);
    const RunRecord record = ::run(job, library, target, progress);
    progress.end();
    if (json) {
        fmt::print("{}", record.json());
    } else if (!quiet) {
        fmt::print(output == "-" ? stderr : stdout, "{}", record.summary());
    }
}
