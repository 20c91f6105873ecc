#include "workbench/commands/Command.h"
#include "workbench/commands/FoldCommand.h"
#include "workbench/methods/Method.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <memory>
#include <string>

// A sentence on each method, from its row.
static std::string methodsText() {
    std::string text;
    for (const Method* method : Method::of(FendraSettings::deconvolution)) {
        text += fmt::format("{} {}; it undoes a convolution in the {} domain. ", method->word,
                            method->about, method->lag == 0 ? "frequency" : "time");
    }
    return text;
}

static void addDeconvolve(CLI::App& program) {
    CLI::App& command = *program.add_subcommand(
        "deconvolve", "Remove a known kernel from a measured signal.\n" + methodsText());
    command.footer(
        "  fendra deconvolve wet.wav room.wav -o dry.wav\n"
        "  fendra deconvolve measured.csv kernel.csv --truth original.csv -o restored.csv\n"
        "  fendra deconvolve lines.csv peak.csv --method van-cittert --max-iterations auto\n"
        "  fendra deconvolve far.csv near.csv --method pseudo-inverse --scaling central\n"
        "  fendra deconvolve lines.csv peak.csv --graph lines.graph      settings that are kept\n");
    const auto deconvolve =
        std::make_shared<FoldCommand>("deconvolve", FendraSettings::deconvolution);
    deconvolve->addTo(command, "SIGNAL", "KERNEL");
    command.callback([deconvolve] { deconvolve->run(); });
}

extern const Command deconvolveCommand = {addDeconvolve};
