#include "workbench/commands/FoldCommand.h"

#include "host/B_BasisModule.h"
#include "platform/Windows1252.h"
#include "workbench/files/disk/FileStream.h"
#include "workbench/files/signalFiles.h"
#include "workbench/jobs/Comparison.h"
#include "workbench/jobs/RunRecord.h"
#include "workbench/messages/Failure.h"
#include "workbench/methods/Setting.h"
#include "workbench/module/FendraModule.h"
#include "workbench/module/StoredGraph.h"
#include "workbench/signals/SampleDigest.h"
#include "workbench/system/fileNames.h"
#include "workbench/terminal/Progress.h"
#include "workbench/terminal/values.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <utility>

void FoldCommand::addOptions(CLI::App& command, const std::string& firstName,
                             const std::string& secondName) {
    command.add_option(firstName, first, signalFileText)->required()->type_name("FILE");
    command.add_option(secondName, second, signalFileText)->required()->type_name("FILE");
    command
        .add_option("--per", per,
                    "pair the signals block by block, or join all blocks to one packet")
        ->check(choice(Setting::named("per").words))
        ->type_name("")
        ->capture_default_str();
    command
        .add_option("--block", block,
                    "cut both signals into blocks of N samples; a signal that fits into one block "
                    "serves every block of the other. Without it the whole signal is one block")
        ->check(countUpTo(std::numeric_limits<std::int32_t>::max(), "block length"))
        ->type_name("N");
    command.add_flag("--pad", pad,
                     "append zeros so that nothing wraps round: the linear result, longer by the "
                     "other signal (per block: each block's own); for van-cittert and "
                     "pseudo-inverse zeros to the shorter signal, which makes the lengths equal");
    command
        .add_option(
            "-o,--output", output,
            "write the result here; the ending chooses the format. Default: text on standard "
            "output")
        ->type_name("FILE");
    command.add_flag("--force", replace, "replace the output if it exists");
    std::vector<std::string> words;
    for (const EncodingRow& row : EncodingRow::all()) {
        words.emplace_back(row.word);
    }
    command
        .add_option("--encoding", encoding,
                    "samples of an audio output; auto is float64, for FLAC pcm24")
        ->check(choice(words))
        ->type_name("")
        ->capture_default_str();
    command.add_option("--rate", rate, "sampling rate for text that has no time column")
        ->check(positiveNumber("sampling rate"))
        ->type_name("HZ");
    command
        .add_option("--truth", truth,
                    "tell the relative error of the result against a known signal")
        ->type_name("FILE");
    command.add_flag("--json", json,
                     "print the record of the run as JSON on standard output; needs -o");
    input.addTo(command);
}

void FoldCommand::addGraph(CLI::App& command) {
    CLI::Option* const option =
        command
            .add_option("--graph", graph,
                        "run with the settings that a stored graph holds; see fendra settings")
            ->type_name("FILE");
    for (const Setting& setting : Setting::all()) {
        if (CLI::Option* const same = command.get_option_no_throw("--" + setting.key)) {
            option->excludes(same);
        }
    }
}

// The dialog cannot bring about what a run refuses here; a file can hold it.
void FoldCommand::takeGraph(B_BasisModule& module) {
    loadGraph(module, graph);
    settings = settingsOf(module);
    const std::string odd = oddSetting(settings);
    if (!odd.empty()) {
        throw Failure(
            fmt::format("{} holds {}, which is not on offer; choose another value with fendra "
                        "settings",
                        SourceName(graph).shown, odd));
    }
    const bool convolves = settings.direction == FendraSettings::convolution;
    if (convolves != (name == "convolve")) {
        throw Failure(fmt::format("{} is set to {}; run it with fendra {}", SourceName(graph).shown,
                                  Setting::named("direction").text(settings),
                                  convolves ? "convolve" : "deconvolve"));
    }
    method = Setting::named(convolves ? "domain" : "method").word(settings);
    per = Setting::named("per").word(settings);
}

std::string FoldCommand::commandLine() const {
    std::string line = fmt::format(
        "fendra {} {} {} {}", name, quoted(first), quoted(second),
        graph.empty() ? fmt::format("{} --per {}", methodWords, per) : "--graph " + quoted(graph));
    const auto add = [&line](bool given, const std::string& words) {
        line += given ? " " + words : "";
    };
    add(block != 0, fmt::format("--block {}", block));
    add(pad, "--pad");
    add(encoding != "auto", "--encoding " + encoding);
    add(rate != 0.0, fmt::format("--rate {}", rate));
    line += input.words();
    add(output != "-", "-o " + quoted(output));
    return line;
}

// The rate of both signals; rates that differ by no more than rounded time columns do are one.
static double commonRate(const SignalInfo& a, const SignalInfo& b, double given) {
    const double known = a.rate > 0.0 ? a.rate : b.rate;
    const auto differ = [](double x, double y) {
        return x > 0.0 && y > 0.0 && std::abs(x - y) > 1e-6 * std::max(x, y);
    };
    if (differ(a.rate, b.rate)) {
        throw Failure(
            fmt::format("{} is sampled at {} Hz and {} at {} Hz; resample one of them first",
                        a.source.shown, a.rate, b.source.shown, b.rate));
    }
    if (differ(known, given)) {
        throw Failure(fmt::format("--rate {} contradicts {} Hz in {}; leave it out", given, known,
                                  a.rate > 0.0 ? a.source.shown : b.source.shown));
    }
    return known > 0.0 ? known : given;
}

// Takes the result as it comes: writes it, and sums up what the record tells of it.
class ResultSink {
public:
    ResultSink(RunRecord& runRecord, SignalWriter& signalWriter, Comparison* knownSignal,
               bool allowNonfinite)
        : record(runRecord),
          writer(signalWriter),
          comparison(knownSignal),
          nonfinite(allowNonfinite) {}

    void take(const double* interleaved, std::int64_t samples) {
        const double* end = interleaved + samples * record.channels;
        // The module leaves NaN where it could not write a result.
        if (!nonfinite && std::all_of(interleaved, end, [](double x) { return std::isnan(x); })) {
            throw Failure(
                "the module gave no result: memory exhausted; cut the signals with --per "
                "block --block N");
        }
        for (const double* value = interleaved; value != end; ++value) {
            record.minimum = std::min(record.minimum, *value);
            record.maximum = std::max(record.maximum, *value);
        }
        digest.add(interleaved, static_cast<std::size_t>(end - interleaved));
        if (comparison != nullptr) {
            comparison->add(interleaved, samples);
        }
        writer.write(interleaved, samples);
    }

    void finish() {
        record.digest = digest.hex();
        if (comparison != nullptr) {
            record.error = comparison->relativeError();
        }
        writer.finish(record.closingNotes());
    }

private:
    RunRecord& record;
    SignalWriter& writer;
    Comparison* comparison;
    bool nonfinite;
    SampleDigest digest;
};

void FoldCommand::run() {
    const bool toStandardOutput = output == "-";
    if (json && toStandardOutput) {
        throw CLI::ValidationError(
            "--json", "it prints on standard output; send the result elsewhere with -o FILE");
    }
    const std::array<std::string, 4> files = {first, second, truth, graph};
    if (std::count(files.begin(), files.end(), "-") > 1) {
        throw CLI::ValidationError("-", "standard input serves one file only");
    }
    const ReadOptions reading = input.reading();
    const auto firstReader = openSignal(SourceName(first), reading),
               secondReader = openSignal(SourceName(second), reading);
    const SignalInfo &a = firstReader->info(), &b = secondReader->info();

    const ModuleLibrary library = input.library();
    const ModuleObject object = library.makeModule();
    if (graph.empty()) {
        settings.executionMode =
            per == "packet" ? FendraSettings::perPacket : FendraSettings::perBlock;
    } else {
        takeGraph(*object);
    }
    const RunPlan plan{settings, block, pad};
    ModuleRun moduleRun(*object, *firstReader, *secondReader, plan);

    RunRecord record;
    record.commandLine = commandLine();
    record.command = name;
    record.method = method;
    record.per = per;
    record.graph = SourceName(graph).shown;
    record.settings = settings;
    record.block = block;
    record.pad = pad;
    record.module = toUtf8(object->moduleName);
    record.moduleVersion = toUtf8(object->moduleVersion);
    record.moduleFile = nameOf(library.file);
    record.inputs = {a, b};
    record.output = toStandardOutput ? "standard output" : output;
    record.channels = moduleRun.channels();
    record.samples = moduleRun.samples();
    record.rounds = moduleRun.rounds();
    record.rate = commonRate(a, b, rate);
    record.truth = truth;

    std::unique_ptr<Comparison> comparison;
    if (!truth.empty()) {
        comparison = std::make_unique<Comparison>(truth, reading, record.channels);
    }
    const auto writer = createSignal(
        {SourceName::ofOutput(output), replace, EncodingRow::named(encoding)->encoding},
        {record.channels, record.samples, record.rate, a.axis,
         a.channels == record.channels ? a.names : b.names, record.openingNotes()});
    ResultSink sink(record, *writer, comparison.get(), input.allowNonfinite);
    tellEstimate(moduleRun);
    {
        Progress progress;
        moduleRun.drive(
            [&](const double* values, std::int64_t samples) { sink.take(values, samples); },
            [&](std::int64_t done, std::int64_t rounds) { progress.show(done, rounds); });
    }
    if (settings.reportsNumbers()) {
        record.numberNames = moduleRun.numberNames();
        record.numbers = moduleRun.numbers();
    }
    sink.finish();
    fmt::print(toStandardOutput ? stderr : stdout, "{}", json ? record.json() : record.summary());
}
