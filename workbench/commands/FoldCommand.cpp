#include "workbench/commands/FoldCommand.h"

#include "workbench/messages/Failure.h"
#include "workbench/reporting/figures.h"
#include "workbench/reporting/pages.h"
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
        command
            .add_flag("--keep-partial", keepPartial,
                      "where Ctrl-C ends an iteration, write the estimate of its last whole step, "
                      "and end with status 130; comments and record say after how many steps. "
                      "Before the first step has ended nothing is written; a second Ctrl-C ends at "
                      "once. Of van-cittert, one channel and whole signals; without a band of "
                      "uncertainty")
            ->group("Result");
        page.addTo(command);
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

// A band takes a run of its own, after the result. What is left to the data may turn out not to be
// the iteration: then there is nothing to keep.
void FoldCommand::checkKeeping(const FoldJob& job) const {
    const auto refuse = [](const char* why) { throw CLI::ValidationError("--keep-partial", why); };
    if (job.settings.method != FendraSettings::vanCittert && !job.leftToData.method) {
        refuse(
            "only the iteration has steps; give --method van-cittert, or leave out --keep-partial");
    }
    if (job.cutting.block != 0) {
        refuse("several blocks have no common step; leave out --block or --keep-partial");
    }
    if (job.treatment.uncertainty) {
        refuse("an estimate that is kept has no band; leave out --uncertainty or --keep-partial");
    }
}

FoldJob FoldCommand::job(const ModuleLibrary& library) const {
    FoldJob job = options.job(library);
    if (keepPartial) {
        checkKeeping(job);
    }
    job.threads = jobs.threads;
    ReadOptions reading = options.reading();
    reading.digest = true;
    options.setFiles(job, first, second, reading, output);
    if (keepPartial) {
        job.keepPartial = true;
        job.treatment.uncertainty = false;  // of text from an automatic treatment
        job.words += " --keep-partial";
    }
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

// Where the result itself goes to standard output, what is said about it goes to standard error.
void FoldCommand::tell(const RunRecord& record) const {
    if (json) {
        fmt::print("{}", record.json());
    } else if (!output.quiet) {
        fmt::print(output.file == "-" ? stderr : stdout, "{}", record.summary());
    }
}

// A picture is without the words of the output.
void FoldCommand::show(Shown& shown, PlotFile* picture, PageFile* pageFile) const {
    RunRecord& record = shown.outcome.record;
    const Page said = pageOf(record);
    if (const std::size_t at = record.words.rfind(output.words()); at != std::string::npos) {
        record.words.erase(at, output.words().size());
    }
    Figure figure = figureOf(shown.signal, shown.kernel, shown.outcome);
    if (picture != nullptr) {
        picture->write(figure, plot.order(figure));
    }
    if (pageFile != nullptr) {
        const auto begin = figure.caption.begin();
        figure.caption.erase(begin, begin + std::ssize(captionOf(record)));  // the page says it
        pageFile->write(said, figure);
    }
}

void FoldCommand::run() const {
    checkStreams();
    const std::unique_ptr<PlotFile> picture = plot.open(output.replace);
    const std::unique_ptr<PageFile> pageFile = page.open(output.replace);
    const ModuleLibrary library = options.library();
    FoldJob folding = job(library);
    Shown shown;
    const bool shows = picture || pageFile;
    if (shows) {
        shown.signal = readWhole(folding.first);
        shown.kernel = readWhole(folding.second);
    }
    Progress progress("", output.quiet);
    if (keepPartial) {
        progress.stopOnInterrupt();
    }
    const RunRecord& record = shown.outcome.record =
        ::run(folding, library, target(), progress, shows ? &shown.outcome.result : nullptr);
    progress.end();
    tell(record);
    if (shows) {
        show(shown, picture.get(), pageFile.get());
    }
    if (record.stop) {
        throw Stopped(fmt::format("{}: {} holds the estimate so far", record.stop->text(),
                                  record.output.shown));
    }
}
