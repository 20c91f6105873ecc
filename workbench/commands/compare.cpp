#include "workbench/commands/Command.h"
#include "workbench/commands/InputOptions.h"
#include "workbench/jobs/CompareJob.h"
#include "workbench/messages/Failure.h"
#include "workbench/methods/Method.h"
#include "workbench/terminal/Progress.h"
#include "workbench/terminal/SettingOptions.h"
#include "workbench/terminal/values.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace {

class CompareCommand {
public:
    void addTo(CLI::App& command);
    void run() const;

private:
    [[nodiscard]] CompareJob job() const;

    std::string signal, kernel, truth, output;
    std::vector<std::string> methods = Setting::named("method").wordList();
    SettingOptions options{FendraSettings::deconvolution};
    bool pad = false, replace = false, json = false, quiet = false;
    InputOptions input;
};

}  // namespace

static std::string reportedText(const MethodOutcome& outcome) {
    std::string text;
    for (const ReportedNumbers& entry : outcome.record.numbers) {
        for (std::size_t i = 0; i < entry.values.size(); ++i) {
            text += fmt::format("{}{} {:.4g}", text.empty() ? "" : ", ",
                                outcome.record.numberNames[i], entry.values[i]);
        }
    }
    return text;
}

// Remarks are sentences and come below, where they do not break the columns.
static void printTable(const std::vector<MethodOutcome>& outcomes, bool withTruth) {
    fmt::print("{:<16}{:>10}{:>11}{}   {}\n", "method", "misfit", "roughness",
               withTruth ? fmt::format("{:>10}", "error") : "", "reported");
    for (const MethodOutcome& outcome : outcomes) {
        if (!outcome.failure.empty()) {
            fmt::print("{:<16}{}\n", outcome.method->word, outcome.failure);
            continue;
        }
        const auto& error = outcome.record.error;
        const std::string line = fmt::format(
            "{:<16}{:>10.2g}{:>11.2g}{}   {}", outcome.method->word, outcome.misfit,
            outcome.roughness, error ? fmt::format("{:>10.2g}", error->relativeError) : "",
            reportedText(outcome));
        fmt::print("{}\n", line.substr(0, line.find_last_not_of(' ') + 1));
    }
    for (const MethodOutcome& outcome : outcomes) {
        for (const std::string& remark : outcome.record.remarks) {
            fmt::print("{}: {}.\n", outcome.method->word, remark);
        }
        if (const auto& error = outcome.record.error;
            error && error->known != outcome.record.samples) {
            fmt::print("{}: the error is over the first {} samples.\n", outcome.method->word,
                       error->samples);
        }
    }
}

static void printJson(const std::vector<MethodOutcome>& outcomes) {
    using Json = nlohmann::ordered_json;
    Json all = Json::array();
    for (const MethodOutcome& outcome : outcomes) {
        Json entry = {{"method", outcome.method->word}};
        if (!outcome.failure.empty()) {
            entry["failure"] = outcome.failure;
        } else {
            entry["misfit"] = outcome.misfit;
            entry["roughness"] = outcome.roughness;
            if (outcome.record.error) {
                entry["relativeError"] = outcome.record.error->relativeError;
                entry["comparedSamples"] = outcome.record.error->samples;
            }
            for (const ReportedNumbers& reported : outcome.record.numbers) {
                for (std::size_t i = 0; i < reported.values.size(); ++i) {
                    entry[outcome.method->numbers.at(i)].push_back(reported.values[i]);
                }
            }
            entry["remarks"] = outcome.record.remarks;
        }
        all.push_back(entry);
    }
    fmt::print("{}\n", all.dump(2, ' ', false, Json::error_handler_t::replace));
}

// The signals are read once, for all methods.
CompareJob CompareCommand::job() const {
    CompareJob job;
    job.settings = options.settings();
    job.leftToData = options.leftToData();
    std::vector<FendraSettings> used;
    for (const std::string& word : methods) {
        FendraSettings settings = job.settings;
        Setting::named("method").assign(settings, word);
        used.push_back(settings);
        job.methods.push_back(Method::selectedBy(settings));
    }
    options.refuseIgnored(used);
    const ReadOptions reading = input.reading();
    job.signal =
        std::make_shared<const Signal>(Signal::of(*openSignal(SourceName(signal), reading)));
    job.kernel =
        std::make_shared<const Signal>(Signal::of(*openSignal(SourceName(kernel), reading)));
    if (!truth.empty()) {
        job.truth = sourceOf(
            std::make_shared<const Signal>(Signal::of(*openSignal(SourceName(truth), reading))));
    }
    job.pad = pad;
    job.allowNonfinite = input.allowNonfinite;
    return job;
}

void CompareCommand::run() const {
    const CompareJob comparison = job();
    const ModuleLibrary library = input.library();
    std::vector<MethodOutcome> outcomes;
    for (const Method* method : comparison.methods) {
        Progress progress(method->word, quiet);
        outcomes.push_back(::run(comparison, *method, library, progress));
    }
    if (json) {
        printJson(outcomes);
    } else {
        printTable(outcomes, comparison.truth.has_value());
    }
    if (!output.empty()) {
        writeResults(outcomes, {SourceName::ofOutput(output), replace});
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
    command.add_option("--methods", methods, "comma-separated list of methods")
        ->delimiter(',')
        ->check(choice(Setting::named("method").wordList()))
        ->type_name("")
        ->default_str("all")
        ->group("Method");
    options.addTo(command, {"method", "per"});
    command
        .add_flag("--pad", pad,
                  "append zeros to the shorter signal, for methods that need equal lengths")
        ->group("Signals");
    input.addTo(command);
    command.add_option("--truth", truth, "the signal that should come out")
        ->type_name("FILE")
        ->group("Result");
    command.add_option("-o,--output", output, "write all results as columns of one file")
        ->type_name("FILE")
        ->group("Result");
    command.add_flag("--force", replace, forceText)->group("Result");
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
