#include "workbench/terminal/FoldOptions.h"

#include "workbench/messages/Failure.h"
#include "workbench/methods/Setting.h"
#include "workbench/module/FendraModule.h"
#include "workbench/module/StoredGraph.h"
#include "workbench/terminal/values.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <limits>

bool FoldOptions::deconvolves() const {
    return options.settings().direction == FendraSettings::deconvolution;
}

void FoldOptions::addTo(CLI::App& command) {
    addFolding(command);
    input.addTo(command);
    addScaling(command);
}

void FoldOptions::addWithoutFilesTo(CLI::App& command) {
    addFolding(command);
    input.addNonfiniteTo(command);
    addScaling(command);
}

void FoldOptions::addFolding(CLI::App& command) {
    options.addTo(command);
    CLI::Option* const stored =
        command
            .add_option("--graph", graph,
                        "run with the settings that a stored graph holds; see fendra settings")
            ->type_name("FILE")
            ->group("Method");
    options.exclude(*stored);
    using Scope = TreatmentOptions::Scope;
    treatments.addTo(command, deconvolves() ? Scope::deconvolution : Scope::convolution);
    addCutting(command);
}

void FoldOptions::addScaling(CLI::App& command) {
    const auto take = [this](const std::string& word) { rate = numberOf(word); };
    command
        .add_option_function<std::string>("--rate", take, rateText)  // in any locale
        ->check(positiveNumber("sampling rate"))
        ->type_name("HZ")
        ->group("Signals");
    command
        .add_option("--gain", gain,
                    fmt::format("scale the result before it is written: by that many dB, from -{0} "
                                "to {0}; normalize makes its largest magnitude full scale, 1.0",
                                Gain::most))
        ->check(gainValue())
        ->type_name("DB|normalize")
        ->group("Result");
}

void FoldOptions::addCutting(CLI::App& command) {
    std::string block =
        "cut both signals into blocks of N samples; a signal of a single block is used for all "
        "blocks of the other. Without it the whole signal is one block";
    std::string pad = "append zeros, so that nothing wraps round";
    if (!deconvolves()) {
        block +=
            "; of --pad: the length of the blocks that it works in, by default what costs least";
        pad +=
            ": n + m - 1 samples, of a signal of any length. In the frequency domain the workbench "
            "computes them, in the time domain the module. Text comes block by block from a pipe "
            "to text, unless it may have an axis; that and sound are read to the end first. An "
            "axis starts at the sum of both starts; without one, the samples before the zero of "
            "the kernel (--origin) stand at the end";
    }
    CLI::Option* const length =
        command.add_option("--block", cutting.block, block)
            ->check(countUpTo(std::numeric_limits<std::int32_t>::max(), "block length"))
            ->type_name("N")
            ->group("Blocks");
    CLI::Option* const padding = command.add_flag("--pad", cutting.pad, pad)->group("Blocks");
    if (!deconvolves()) {
        command
            .add_flag("--circular", cutting.circular,
                      "convolve the blocks of --block as the module does: each wraps round by "
                      "itself, and so they do not add up to the filtered signal, as those of --pad "
                      "do")
            ->needs(length)
            ->excludes(padding)
            ->group("Blocks");
    }
}

// A graph may hold what the command line would not set, and another direction.
FendraSettings FoldOptions::settings(const ModuleLibrary& library) const {
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
LeftToData FoldOptions::leftToData() const {
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

std::string FoldOptions::words(const FendraSettings& used, const LeftToData& left,
                               const Treatment& treatment, const Cutting& cut) const {
    std::string line = graph.empty() ? optionWords(used, left) : "--graph " + quoted(graph);
    line += treatmentWords(treatment);
    const auto add = [&line](bool given, const std::string& words) {
        line += given ? " " + words : "";
    };
    add(cut.block != 0, fmt::format("--block {}", cut.block));
    add(cut.pad, "--pad");
    add(cut.circular, "--circular");
    add(rate != 0.0, fmt::format("--rate {}", rate));
    add(!gain.empty(), "--gain " + gain);
    return line + input.words();
}

FoldJob FoldOptions::job(const ModuleLibrary& library) const {
    FoldJob job;
    job.settings = settings(library);
    job.leftToData = leftToData();
    job.treatment = treatments.treatment();
    job.cutting = cutting;
    job.rate = rate;
    job.gain = gainOf(gain);
    job.allowNonfinite = input.allowNonfinite;
    job.graph = graph.empty() ? "" : SourceName(graph).shown;
    return job;
}

std::string FoldOptions::words(const FoldJob& job) const {
    return name + " " + words(job.settings, job.leftToData, job.treatment, job.cutting);
}

void FoldOptions::setWords(FoldJob& job, const std::string& first, const std::string& second,
                           const std::string& outputWords) const {
    const auto line =
        [this, begin = fmt::format("fendra {} {} {}", name, quoted(first), quoted(second)),
         end = outputWords, cut = job.cutting](const FendraSettings& used, const LeftToData& left,
                                               const Treatment& treatment) {
            return begin + " " + words(used, left, treatment, cut) + end;
        };
    job.words = line(job.settings, job.leftToData, job.treatment);
    job.wordsWith = [line](const FendraSettings& found, const Treatment& treatment) {
        return line(found, {}, treatment);
    };
}

void FoldOptions::setFiles(FoldJob& job, const std::string& first, const std::string& second,
                           const ReadOptions& reading, const OutputOptions& output) const {
    job.first = fileSource(first, reading);
    job.second = fileSource(second, reading);
    setWords(job, first, second, output.words());
    if (job.treatment.automatic && holdsColumns(output.target().name)) {
        job.treatment.uncertainty = true;
    }
}
