#include "host/B_BasisModule.h"
#include "workbench/commands/Command.h"
#include "workbench/commands/InputOptions.h"
#include "workbench/commands/MethodOptions.h"
#include "workbench/files/signalFiles.h"
#include "workbench/jobs/MethodComparison.h"
#include "workbench/messages/Failure.h"
#include "workbench/terminal/values.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

struct Compare {
    std::string signal, kernel, truth, output;
    std::vector<std::string> methods = MethodOptions::methods();
    MethodOptions options;
    bool pad = false, replace = false, json = false;
    InputOptions input;

    void run() const;
};

// Sum of squares of a channel; that of the only one where there is one.
static double energyOf(const MemorySignal& signal, std::size_t channel) {
    const auto channels = static_cast<std::size_t>(signal.info().channels);
    double squares = 0.0;
    for (std::size_t i = channel % channels; i < signal.interleaved().size(); i += channels) {
        squares += signal.interleaved()[i] * signal.interleaved()[i];
    }
    return squares;
}

static std::vector<std::string> remarksOnKernel(const MemorySignal& kernel) {
    const SpectrumFloor floor = spectrumFloor(kernel);
    if (floor.lowBins == 0) {
        return {};
    }
    return {fmt::format(
        "{} of {} bins of the kernel's spectrum lie below a thousandth of the largest, the deepest "
        "at {:.2g} of it; noise there grows as much",
        floor.lowBins, floor.bins, floor.deepest)};
}

// Empty if the numbers of a channel tell nothing against the method. The error that the iteration
// starts from is the energy of its signal.
static std::string remarkOnNumbers(const std::string& method, double first, double second,
                                   double energy) {
    constexpr double shortfall = 0.1;
    if (method == "van-cittert" && second == 1.0) {
        return "the iteration stopped at once: its first step raised the error; try a smaller "
               "--convergence, or a smoother kernel";
    }
    if (method == "van-cittert" && !(first <= energy)) {
        return "the iteration diverged: its error is larger than at the start; try a smaller "
               "--convergence, or --stop-at-minimum";
    }
    if (method == "pseudo-inverse" && !(std::abs(second) <= shortfall)) {
        return fmt::format(
            "the filter falls short of an inverse: the central element of its identity is {:.2g} "
            "where 1 is due",
            1.0 - second);
    }
    return "";
}

static std::vector<std::string> remarksOn(const MethodOutcome& outcome, const MemorySignal& signal,
                                          const MemorySignal& kernel) {
    std::vector<std::string> remarks;
    if (outcome.method == "spectral") {
        remarks = remarksOnKernel(kernel);
    }
    const std::size_t channels = outcome.numbers.size() / 2;
    for (std::size_t c = 0; c < channels; ++c) {
        const std::string remark = remarkOnNumbers(outcome.method, outcome.numbers[2 * c],
                                                   outcome.numbers[2 * c + 1], energyOf(signal, c));
        if (!remark.empty()) {
            remarks.push_back(channels == 1 ? remark
                                            : fmt::format("channel {}: {}", c + 1, remark));
        }
    }
    return remarks;
}

static std::string reportedText(const MethodOutcome& outcome) {
    std::string text;
    for (std::size_t i = 0; i < outcome.numbers.size(); ++i) {
        text += fmt::format("{}{} {:.4g}", i == 0 ? "" : ", ", outcome.numberNames[i % 2],
                            outcome.numbers[i]);
    }
    return text;
}

static void printTable(const std::vector<MethodOutcome>& outcomes, bool withTruth) {
    fmt::print("{:<16}{:>10}{:>11}{}   {}\n", "method", "misfit", "roughness",
               withTruth ? fmt::format("{:>10}", "error") : "", "reported");
    for (const MethodOutcome& outcome : outcomes) {
        if (!outcome.failure.empty()) {
            fmt::print("{:<16}{}\n", outcome.method, outcome.failure);
            continue;
        }
        const std::string line = fmt::format(
            "{:<16}{:>10.2g}{:>11.2g}{}   {}", outcome.method, outcome.misfit, outcome.roughness,
            outcome.error ? fmt::format("{:>10.2g}", *outcome.error) : "", reportedText(outcome));
        fmt::print("{}\n", line.substr(0, line.find_last_not_of(' ') + 1));
    }
    for (const MethodOutcome& outcome : outcomes) {
        for (const std::string& remark : outcome.remarks) {
            fmt::print("{}: {}.\n", outcome.method, remark);
        }
    }
}

static void printJson(const std::vector<MethodOutcome>& outcomes) {
    using Json = nlohmann::ordered_json;
    Json all = Json::array();
    for (const MethodOutcome& outcome : outcomes) {
        Json entry = {{"method", outcome.method}};
        if (!outcome.failure.empty()) {
            entry["failure"] = outcome.failure;
        } else {
            entry["misfit"] = outcome.misfit;
            entry["roughness"] = outcome.roughness;
            if (outcome.error) {
                entry["relativeError"] = *outcome.error;
            }
            for (std::size_t i = 0; i < outcome.numbers.size(); ++i) {
                entry[outcome.numberNames[i % 2]].push_back(outcome.numbers[i]);
            }
            entry["remarks"] = outcome.remarks;
        }
        all.push_back(entry);
    }
    fmt::print("{}\n", all.dump(2, ' ', false, Json::error_handler_t::replace));
}

// All results as columns of one file; a method without one has none.
static void writeResults(const std::vector<MethodOutcome>& outcomes, const SignalInfo& info,
                         const std::string& path, bool replace) {
    ResultInfo file{0, info.samples, info.rate, info.axis, {}, {}};
    std::vector<const MethodOutcome*> columns;
    for (const MethodOutcome& outcome : outcomes) {
        const std::int64_t channels = std::ssize(outcome.result) / info.samples;
        for (std::int64_t c = 0; c < channels; ++c) {
            file.columnNames.push_back(channels == 1 ? outcome.method
                                                     : fmt::format("{}_{}", outcome.method, c + 1));
            columns.push_back(&outcome);
        }
    }
    file.channels = static_cast<int>(columns.size());
    if (columns.empty()) {
        throw Failure("no method gave a result; there is nothing to write");
    }
    std::vector<double> interleaved;
    for (std::int64_t i = 0; i < info.samples; ++i) {
        for (const MethodOutcome& outcome : outcomes) {
            const std::int64_t channels = std::ssize(outcome.result) / info.samples;
            const double* first = outcome.result.data() + i * channels;
            interleaved.insert(interleaved.end(), first, first + channels);
        }
    }
    const auto writer = createSignal({SourceName::ofOutput(path), replace}, file);
    writer->write(interleaved.data(), info.samples);
    writer->finish({});
}

void Compare::run() const {
    const ReadOptions reading = input.reading();
    MemorySignal measured(*openSignal(SourceName(signal), reading)),
        response(*openSignal(SourceName(kernel), reading));
    if (pad) {
        const std::int64_t longer = std::max(measured.info().samples, response.info().samples);
        measured.pad(longer);
        response.pad(longer);
    }
    std::optional<MemorySignal> known;
    if (!truth.empty()) {
        known.emplace(*openSignal(SourceName(truth), reading));
        const int channels = std::max(measured.info().channels, response.info().channels);
        if (known->info().channels != channels) {
            throw Failure(
                fmt::format("{} has {} channels and the result has {}; they cannot be "
                            "compared",
                            known->info().source.shown, known->info().channels, channels));
        }
    }
    const ModuleLibrary library = input.library();
    const ModuleObject object = library.makeModule();
    MethodComparison comparison(*object, measured, response);
    std::vector<MethodOutcome> outcomes;
    for (const std::string& method : methods) {
        outcomes.push_back(
            comparison.run(method, options.settings(method), known ? &*known : nullptr));
        outcomes.back().remarks = remarksOn(outcomes.back(), measured, response);
    }
    if (!output.empty()) {
        writeResults(outcomes, measured.info(), output, replace);
    }
    if (json) {
        printJson(outcomes);
    } else {
        printTable(outcomes, known.has_value());
    }
}

void addCompare(CLI::App& program) {
    CLI::App& command = *program.add_subcommand(
        "compare",
        "Deconvolve by several methods and compare.\n"
        "misfit is how far the result, convolved with KERNEL, is from SIGNAL; roughness how much "
        "neighbouring samples differ; error, with --truth, how far the result is from the known "
        "signal: each as a root mean square over that of the signal compared with. Behind the "
        "table stands what a method cannot do here.");
    command.footer(
        "  fendra compare measured.csv kernel.csv\n"
        "  fendra compare blurred.csv kernel.csv --truth original.csv -o results.csv\n");
    const auto compare = std::make_shared<Compare>();
    command.add_option("SIGNAL", compare->signal, signalFileText)->required()->type_name("FILE");
    command.add_option("KERNEL", compare->kernel, signalFileText)->required()->type_name("FILE");
    command.add_option("--methods", compare->methods, "the methods, with commas between them")
        ->delimiter(',')
        ->check(choice(MethodOptions::methods()))
        ->type_name("")
        ->default_str("all");
    command.add_option("--truth", compare->truth, "the signal that should come out")
        ->type_name("FILE");
    command.add_flag("--pad", compare->pad, "append zeros to the shorter signal");
    command.add_option("-o,--output", compare->output, "write all results as columns of one file")
        ->type_name("FILE");
    command.add_flag("--force", compare->replace, "replace the output if it exists");
    command.add_flag("--json", compare->json, "print JSON");
    compare->options.addSettings(command);
    compare->input.addTo(command);
    command.callback([compare] { compare->run(); });
}
