#include "workbench/commands/Command.h"
#include "workbench/commands/CompareCommand.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/reporting/figures.h"
#include "workbench/reporting/pages.h"
#include "workbench/terminal/Progress.h"
#include "workbench/terminal/comparisonText.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <memory>

// The signals are read once, for all methods.
CompareJob CompareCommand::job() const {
    CompareJob job = options.job();
    ReadOptions reading = options.reading();
    reading.digest = !page.file.empty();
    const auto whole = [&](const std::string& file) {
        return std::make_shared<const Signal>(Signal::of(*openSignal(SourceName(file), reading)));
    };
    job.signal = whole(signal);
    job.kernel = whole(kernel);
    if (!truth.empty()) {
        job.truth = sourceOf(whole(truth));
    }
    job.threads = jobs.threads;
    return job;
}

// The command line that gives the same results again.
std::string CompareCommand::words(const CompareJob& job) const {
    return fmt::format("fendra compare {} {}{}{}{}", quoted(signal), quoted(kernel),
                       options.words(job), truth.empty() ? "" : " --truth " + quoted(truth),
                       output.empty() ? "" : " -o " + quoted(output));
}

// Those of a picture.
std::string CompareCommand::wordsWithoutOutput(const CompareJob& job) const {
    CompareCommand unnamed = *this;
    unnamed.output.clear();
    return unnamed.words(job);
}

void CompareCommand::run() const {
    const std::unique_ptr<PageFile> pageFile = page.open(replace);
    const std::unique_ptr<PlotFile> picture = plot.open(replace);
    const CompareJob comparison = job();
    const ModuleLibrary library = options.library();
    Progress progress("", quiet);
    const std::vector<MethodOutcome> outcomes = ::run(comparison, library, progress);
    progress.end();
    fmt::print("{}", json ? comparisonJson(outcomes)
                          : comparisonTable(outcomes, comparison.truth.has_value()));
    if (!output.empty()) {
        writeResults(outcomes, {SourceName::ofOutput(output), replace});
    }
    if (pageFile || picture) {
        Figure figure = figureOf(comparison, outcomes);
        if (pageFile) {
            pageFile->write(pageOf(comparison, outcomes, words(comparison)), figure);
        }
        if (picture) {
            figure.caption.insert(figure.caption.begin(),
                                  printable(wordsWithoutOutput(comparison)));
            picture->write(figure, plot.order(figure));
        }
    }
    const auto failed = std::count_if(outcomes.begin(), outcomes.end(),
                                      [](const auto& outcome) { return !outcome.failure.empty(); });
    if (failed > 0) {
        throw Failure(
            fmt::format("{} of {} methods gave no result; the reasons are given above; choose "
                        "others with --methods",
                        failed, outcomes.size()));
    }
}

void CompareCommand::addTo(CLI::App& command) {
    command.add_option("SIGNAL", signal, signalFileText)->required()->type_name("FILE");
    command.add_option("KERNEL", kernel, signalFileText)->required()->type_name("FILE");
    options.addTo(command);
    command.add_option("--truth", truth, "the signal that should come out")
        ->type_name("FILE")
        ->group("Result");
    command.add_option("-o,--output", output, "write all results as columns of one file")
        ->type_name("FILE")
        ->group("Result");
    command.add_flag("--force", replace, forceText)->group("Result");
    page.addTo(command);
    plot.addTo(command);
    jobs.addTo(command, "methods");
    command.add_flag("--json", json, "print JSON")->group("Result");
    command.add_flag("-q,--quiet", quiet, "show no progress")->group("Result");
}

static void addCompare(CLI::App& program) {
    CLI::App& command = *program.add_subcommand(
        "compare",
        "Deconvolve by several methods and compare.\n"
        "misfit is how far the result, convolved with KERNEL, is from SIGNAL; roughness how much "
        "neighbouring samples differ; error, with --truth, how far the result is from the known "
        "signal: each as a root mean square over that of the signal compared with. Remarks below "
        "the table say where a method fails on this data.");
    command.footer(
        "  fendra compare measured.csv kernel.csv\n"
        "  fendra compare blurred.csv kernel.csv --truth original.csv -o results.csv\n");
    const auto compare = std::make_shared<CompareCommand>();
    compare->addTo(command);
    command.callback([compare] { compare->run(); });
}

extern const Command compareCommand = {addCompare};
