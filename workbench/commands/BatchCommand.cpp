#include "workbench/commands/BatchCommand.h"

#include "workbench/commands/recordedWords.h"
#include "workbench/files/Format.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/methods/Setting.h"
#include "workbench/methods/settingsJson.h"
#include "workbench/terminal/BatchPainter.h"
#include "workbench/terminal/Progress.h"
#include "workbench/terminal/values.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <charconv>
#include <cstdio>
#include <iterator>
#include <optional>
#include <sstream>
#include <system_error>
#include <vector>

static std::vector<std::string> endingWords() {
    std::vector<std::string> words;
    std::istringstream endings(Format::allEndings());
    for (std::string ending; endings >> ending;) {
        words.push_back(ending.substr(1));  // without the dot
    }
    return words;
}

static std::optional<Shard> shardOf(const std::string& word) {
    Shard shard;
    const char* const end = word.data() + word.size();
    const auto [slash, first] = std::from_chars(word.data(), end, shard.index);
    if (first != std::errc() || slash == end || *slash != '/') {
        return std::nullopt;
    }
    const auto [rest, second] = std::from_chars(slash + 1, end, shard.count);
    const bool right =
        second == std::errc() && rest == end && shard.index >= 1 && shard.index <= shard.count;
    return right ? std::optional(shard) : std::nullopt;
}

static CLI::Validator shardValue() {
    return settingValue({}, true, [](const std::string& word) {
        return shardOf(word)
                   ? std::string()
                   : fmt::format("\"{}\" is not a part; give I/N, such as 2/8", printable(word));
    });
}

void BatchCommand::addTo(CLI::App& command) {
    addFiles(command);
    addWay(command);
    options.addTo(command);
    output.addWithoutFileTo(command);
}

void BatchCommand::addFiles(CLI::App& command) {
    command
        .add_option("SIGNALS", selection.words,
                    "files, folders, and patterns in quotes, such as 'takes/*.wav'. Of a folder "
                    "all files are taken whose ending is that of a format")
        ->required()
        ->type_name("FILE");
    command
        .add_option(
            "--kernel", kernel,
            "the kernel of all; or of each its own, 'irs/{name}.wav': {name} stands for the "
            "name of the file without folder and ending, {path} for its path below FOLDER "
            "without ending")
        ->required()
        ->type_name("FILE")
        ->group("Files");
    command
        .add_option("--into", selection.into,
                    "folder of the results: each has the name of its signal, below the folder or "
                    "pattern that was named, and batch.jsonl says what became of it")
        ->required()
        ->type_name("FOLDER")
        ->group("Files");
    command.add_flag("--recursive", selection.recursive, "search the folders below folders, too")
        ->group("Files");
    command
        .add_option("--format", format,
                    "ending of the results, such as wav or csv. Default: that of the signal")
        ->check(choice(endingWords()))
        ->type_name("")
        ->group("Files");
}

void BatchCommand::addWay(CLI::App& command) {
    jobs.addTo(command, "files");
    CLI::Option* const part =
        command
            .add_option("--shard", shard,
                        "do the I-th of N parts, I from 1, with a manifest of its own; which files "
                        "it has follows from their names alone")
            ->check(shardValue())
            ->type_name("I/N")
            ->group("Parts");
    slurm.addTo(command, *part);
    if (options.deconvolves()) {
        command
            .add_option("--choose", choose,
                        "where method, strength or steps are left to the data, whose: first: those "
                        "of the first file by name, then frozen; each: those of each file; or a "
                        "FILE with the record of an earlier run (--json), whose settings are taken")
            ->type_name("first|each|FILE")
            ->default_str(choose)
            ->group("Method");
    }
}

// The method and its options; what is known of the noise may stand beside a record.
static std::string methodWords(FoldJob job) {
    job.treatment.noise = {};
    return fmt::format("{}{} {} {}", optionWords(job.settings, job.leftToData),
                       treatmentWords(job.treatment), job.cutting.block, job.cutting.pad);
}

// Settings, treatment and blocks of another command line. Options given beside it would have no
// effect.
BatchCommand::Way BatchCommand::recordedWay(const ModuleLibrary& library,
                                            const FoldJob& given) const {
    const FoldOptions untouched(name, given.settings.direction);
    if (methodWords(given) != methodWords(untouched.job(library)) || !options.graphFile().empty()) {
        throw CLI::ValidationError("--choose",
                                   "the record gives the method and its options; leave yours out");
    }
    const std::vector<std::string> words = recordedWords(choose);
    CLI::App parser;
    std::string signal, kernelFile;
    FoldOptions recorded(name, given.settings.direction);
    OutputOptions ignored;
    parser.add_option("SIGNAL", signal);
    parser.add_option("KERNEL", kernelFile);
    recorded.addTo(parser);
    ignored.addTo(parser, "");
    try {
        if (words.size() < 2 || words[1] != name) {
            throw CLI::ParseError("another command", 1);
        }
        parser.parse(std::vector<std::string>(words.rbegin(), words.rend() - 2));
        const FoldJob found = recorded.job(library);
        Way way{given, found.treatment.automatic || found.treatment.uncertainty};
        way.job.settings = found.settings;
        way.job.leftToData = found.leftToData;
        way.job.treatment = found.treatment;
        way.job.treatment.uncertainty = false;
        way.job.treatment.noise = given.treatment.noise;
        way.job.cutting = found.cutting;
        return way;
    } catch (const CLI::ParseError&) {
        throw Failure(fmt::format("{} is not the record of a run of fendra {}; give another",
                                  SourceName(choose).shown, name));
    }
}

// What a run finds in the first file takes the place of what was left to the data. The noise is
// left to each file: it says how far its result is to be trusted.
BatchCommand::Way BatchCommand::frozenByFirst(const ModuleLibrary& library, const Way& given,
                                              const Batch& batch) const {
    const BatchItem& first = batch.items.front();
    FoldJob chooses = task(given, batch, first, kernelOf(kernel, first)).job;
    Way way = given;
    way.bands = given.bands || given.job.treatment.automatic;
    chooses.wordsWith = [&](const FendraSettings& found, const Treatment& treatment) {
        way.job.settings = found;
        way.job.leftToData = {};
        way.job.treatment = treatment;
        way.job.treatment.uncertainty = given.job.treatment.uncertainty;
        way.job.treatment.noise = given.job.treatment.noise;
        return "";
    };
    Progress progress("choosing by " + first.signal, output.quiet);
    ::run(chooses, library, progress);
    return way;
}

BatchCommand::Way BatchCommand::chosenWay(const ModuleLibrary& library, const Batch& batch) const {
    Way way{options.job(library)};
    if (choose != "first" && choose != "each") {
        way = recordedWay(library, way.job);
    }
    const Treatment& treatment = way.job.treatment;
    const bool left =
        way.job.leftToData.any() || treatment.automatic || treatment.oversampling == 0 ||
        (way.job.settings.method == FendraSettings::regularized && !treatment.strength);
    return left && choose != "each" ? frozenByFirst(library, way, batch) : way;
}

Batch::Task BatchCommand::task(const Way& way, const Batch& batch, const BatchItem& item,
                               const std::string& kernelFile) const {
    OutputOptions own = output;
    own.file = batch.resultFile(item);
    Batch::Task task{way.job, own.target()};
    task.target.lossy = options.reading().lossy;
    if (way.bands && holdsColumns(task.target.name)) {
        task.job.treatment.uncertainty = true;
    }
    // The batch itself knows the digests of what it reads.
    options.setFiles(task.job, item.signal, kernelFile, options.reading(), own);
    return task;
}

std::string BatchCommand::settingsText(const Way& way, const ModuleLibrary& library) const {
    const ModuleObject module = library.makeModule();
    nlohmann::ordered_json settings = settingsJson(way.job.settings);
    settings["block"] = way.job.cutting.block;
    settings["pad"] = way.job.cutting.pad;
    settings["options"] = options.words(way.job) + output.words() + (way.bands ? " (bands)" : "");
    settings["module"] = moduleName(*module) + " " + moduleVersion(*module);
    return settings.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

void BatchCommand::tell(const Batch& batch, const BatchProgress& progress) const {
    const std::string manifest =
        SourceName(selection.into).shown + "/" + batch.shard.manifestName();
    if (!output.quiet) {
        fmt::print("{}: {} of {} files done", SourceName(selection.into).shown,
                   progress.done + progress.skipped, progress.files);
        fmt::print("{}{}\n",
                   progress.skipped > 0 ? fmt::format(", {} of them before", progress.skipped) : "",
                   progress.warned > 0
                       ? fmt::format(", {} with remarks: see {}", progress.warned, manifest)
                       : "");
    }
    if (progress.failed == 0) {
        return;
    }
    std::fflush(stdout);
    for (const std::string& failure : progress.failures) {
        fmt::print(stderr, "{}\n", failure);
    }
    throw Failure(fmt::format(
        "{} of {} files failed{}; the reasons are in {}, and the same "
        "command does them again",
        progress.failed, progress.files,
        progress.failed > std::ssize(progress.failures) ? ", the first of them above" : "",
        manifest));
}

// The tasks of the array choose, too; they find the same.
BatchProgress BatchCommand::runOnCluster(const Batch& batch, const ModuleLibrary& library,
                                         BatchPainter& painter) const {
    static_cast<void>(options.job(library));  // refused here, and not by each task
    commonKernel(batch);
    return ::run(slurm.batch(batch.items, batch.into), painter, [&](const std::string& line) {
        painter.end();
        if (!output.quiet) {
            fmt::print(stderr, "{}\n", line);
        }
    });
}

BatchProgress BatchCommand::runHere(Batch& batch, const ModuleLibrary& library,
                                    BatchPainter& painter) const {
    const Way way = chosenWay(library, batch);
    batch.settings = settingsText(way, library);
    batch.task = [&](const BatchItem& item, const std::string& kernelFile) {
        return task(way, batch, item, kernelFile);
    };
    return ::run(batch, library, painter);
}

void BatchCommand::run() const {
    SignalSelection selected = selection;
    selected.ending = format.empty() ? "" : "." + format;
    Batch batch;
    batch.items = listSignals(selected);
    batch.shard = shard.empty() ? Shard() : *shardOf(shard);
    batch.kernel = kernel;
    batch.into = selection.into;
    batch.replace = output.replace;
    batch.threads = jobs.threads;
    batch.reading = options.reading();
    const ModuleLibrary library = options.library();
    BatchPainter painter(output.quiet);
    const BatchProgress progress =
        slurm.given() ? runOnCluster(batch, library, painter) : runHere(batch, library, painter);
    painter.end();
    tell(batch, progress);
}
