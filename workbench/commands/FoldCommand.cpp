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
    const bool deconvolves = options.settings().direction == FendraSettings::deconvolution;
    using Scope = TreatmentOptions::Scope;
    treatments.addTo(command, deconvolves ? Scope::deconvolution : Scope::convolution);
    addCutting(command);
    input.addTo(command);
    command.add_option("--rate", rate, rateText)
        ->check(positiveNumber("sampling rate"))
        ->type_name("HZ")
        ->group("Signals");
    addOutput(command);
    if (deconvolves) {
        command
            .add_option("--curve", curve,
                        "write all points of the search: steps or strength, error, degrees of "
                        "freedom kept, and the criterion")
            ->type_name("FILE")
            ->group("Result");
    }
}

void FoldCommand::addCutting(CLI::App& command) {
    const bool deconvolves = options.settings().direction == FendraSettings::deconvolution;
    std::string block =
        "cut both signals into blocks of N samples; a signal of a single block is used for all "
        "blocks of the other. Without it the whole signal is one block";
    std::string pad = "append zeros, so that nothing wraps round";
    if (!deconvolves) {
        block += ". With --pad in the frequency domain: the length of the blocks that it works in";
        pad +=
            ": n + m - 1 samples. In the frequency domain the workbench computes them, and the "
            "longer signal may be of any length, and come block by block from a pipe if it is text "
            "without an axis; in the time domain each block is padded by its "
            "own. An axis starts at the sum of both starts; without one, samples before the zero "
            "of the kernel (--origin) are left out";
    }
    command.add_option("--block", cutting.block, block)
        ->check(countUpTo(std::numeric_limits<std::int32_t>::max(), "block length"))
        ->type_name("N")
        ->group("Blocks");
    command.add_flag("--pad", cutting.pad, pad)->group("Blocks");
}

void FoldCommand::addOutput(CLI::App& command) {
    output.addTo(command,
                 "write the result here; the ending chooses the format. Default: text on standard "
                 "output");
    command
        .add_option("--truth", truth,
                    "report the relative error of the result against a known signal")
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
    const std::array<std::string, 4> files = {first, second, truth, graph};
    if (std::count(files.begin(), files.end(), "-") > 1) {
        throw CLI::ValidationError("-", "standard input serves one file only");
    }
}

// A graph may hold what the command line would not set, and another direction.
FendraSettings FoldCommand::settings(const ModuleLibrary& library) const {
    FendraSettings given = options.settings();
    if (treatments.automatic() && treatments.choosesBand() && !options.isGiven("method")) {
        given.method = FendraSettings::regularized;
    }
    if (graph.empty()) {
        options.refuseIgnored({given});
        treatments.refuseIgnored({given}, cutting.pad);
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
    treatments.refuseIgnored({stored}, cutting.pad);
    return stored;
}

// An automatic treatment leaves whatever was not given.
LeftToData FoldCommand::leftToData() const {
    LeftToData left = options.leftToData();
    if (treatments.automatic() && graph.empty()) {
        const bool open = !options.isGiven("method") && !treatments.choosesBand();
        const bool iterates = options.settings().method == FendraSettings::vanCittert;
        left.method = open;
        left.convergence |= (open || iterates) && !options.isGiven("convergence");
        left.maxIterations |= (open || iterates) && !options.isGiven("max-iterations");
    }
    return left;
}

// Without --force, --truth and --json, which do not change the result.
std::string FoldCommand::commandLine(const FendraSettings& used, const LeftToData& left,
                                     const Treatment& treatment) const {
    std::string line =
        fmt::format("fendra {} {} {} {}", name, quoted(first), quoted(second),
                    graph.empty() ? optionWords(used, left) : "--graph " + quoted(graph));
    line += treatmentWords(treatment);
    const auto add = [&line](bool given, const std::string& words) {
        line += given ? " " + words : "";
    };
    add(cutting.block != 0, fmt::format("--block {}", cutting.block));
    add(cutting.pad, "--pad");
    add(rate != 0.0, fmt::format("--rate {}", rate));
    return line + input.words() + output.words();
}

FoldJob FoldCommand::job(const ModuleLibrary& library) const {
    const ReadOptions reading = input.reading();
    FoldJob job;
    job.first = fileSource(first, reading);
    job.second = fileSource(second, reading);
    job.settings = settings(library);
    job.leftToData = leftToData();
    job.treatment = treatments.treatment();
    job.cutting = cutting;
    job.rate = rate;
    job.allowNonfinite = input.allowNonfinite;
    job.words = commandLine(job.settings, job.leftToData, job.treatment);
    job.wordsWith = [this](const FendraSettings& found, const Treatment& treatment) {
        return commandLine(found, {}, treatment);
    };
    job.graph = graph.empty() ? "" : SourceName(graph).shown;
    if (!truth.empty()) {
        job.truth = fileSource(truth, reading);
    }
    if (!curve.empty()) {
        job.curve = SignalTarget{SourceName::ofOutput(curve), output.replace};
    }
    if (job.treatment.automatic && holdsColumns(output.target().name)) {
        job.treatment.uncertainty = true;
    }
    return job;
}

// Where the result itself goes to standard output, what is said about it goes to standard error.
void FoldCommand::run() const {
    checkStreams();
    const ModuleLibrary library = input.library();
    const FoldJob folding = job(library);
    Progress progress("", output.quiet);
    const RunRecord record = ::run(folding, library, output.target(), progress);
    progress.end();
    if (json) {
        fmt::print("{}", record.json());
    } else if (!output.quiet) {
        fmt::print(output.file == "-" ? stderr : stdout, "{}", record.summary());
    }
}
