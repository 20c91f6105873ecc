#include "workbench/commands/FoldCommand.h"

#include "workbench/reporting/figures.h"
#include "workbench/terminal/Progress.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <array>

void FoldCommand::addTo(CLI::App& command, const std::string& firstName,
                        const std::string& secondName) {
    command.add_option(firstName, first, signalFileText)->required()->type_name("FILE");
    command.add_option(secondName, second, signalFileText)->required()->type_name("FILE");
    options.addTo(command);
    addOutput(command);
    plot.addTo(command);
    jobs.addTo(command, "channels and blocks");
    if (options.deconvolves()) {
        command
            .add_option("--curve", curve,
                        "write all points of the search: steps or strength, error, degrees of "
                        "freedom kept, and the criterion")
            ->type_name("FILE")
            ->group("Result");
    }
}

void FoldCommand::addOutput(CLI::App& command) {
    output.addTo(command,
                 "write the result here; the ending chooses the format. Default: text on standard "
                 "output");
    command
        .add_option("--truth", truth,
                    "report the relative error of the result, before any --gain, against a known "
                    "signal")
        ->type_name("FILE")
        ->group("Result");
    command
        .add_flag("--json", json,
                  "print the record of the run as JSON on standard output; needs -o")
        ->group("Result");
}

void FoldCommand::checkStreams() const {
    if (json && output.file == "-") {
        throw CLI::ValidationError(
            "--json", "it prints on standard output; send the result elsewhere with -o FILE");
    }
    const std::array<std::string, 4> files = {first, second, truth, options.graphFile()};
    if (std::count(files.begin(), files.end(), "-") > 1) {
        throw CLI::ValidationError("-", "standard input serves one file only");
    }
}

FoldJob FoldCommand::job(const ModuleLibrary& library) const {
    FoldJob job = options.job(library);
    job.threads = jobs.threads;
    ReadOptions reading = options.reading();
    reading.digest = true;
    options.setFiles(job, first, second, reading, output);
    if (!truth.empty()) {
        job.truth = fileSource(truth, options.reading());
    }
    if (!curve.empty()) {
        job.curve = SignalTarget{SourceName::ofOutput(curve), output.replace};
    }
    return job;
}

SignalTarget FoldCommand::target() const {
    SignalTarget target = output.target();
    target.lossy = options.reading().lossy;
    return target;
}

// Reads a source, which then gives what was read.
static SharedSignal readWhole(SignalSource& source) {
    auto signal = std::make_shared<const Signal>(Signal::of(*source.open()));
    source = sourceOf(signal);
    return signal;
}

// The words that a job was given, which end with those of its output.
std::string FoldCommand::withoutOutput(const std::string& words) const {
    return words.substr(0, words.size() - output.words().size());
}

// Where the result itself goes to standard output, what is said about it goes to standard error.
void FoldCommand::run() const {
    checkStreams();
    const std::unique_ptr<PlotFile> picture = plot.open(output.replace);
    const ModuleLibrary library = options.library();
    FoldJob folding = job(library);
    SharedSignal signal, kernel;
    Outcome seen;
    if (picture) {
        signal = readWhole(folding.first);
        kernel = readWhole(folding.second);
    }
    Progress progress("", output.quiet);
    const RunRecord record =
        ::run(folding, library, target(), progress, picture ? &seen.result : nullptr);
    progress.end();
    if (json) {
        fmt::print("{}", record.json());
    } else if (!output.quiet) {
        fmt::print(output.file == "-" ? stderr : stdout, "{}", record.summary());
    }
    if (picture) {
        seen.record = record;
        seen.record.words = withoutOutput(record.words);
        const Figure figure = figureOf(signal, kernel, seen);
        picture->write(figure, plot.order(figure));
    }
}
