#include "workbench/commands/Command.h"
#include "workbench/commands/FoldCommand.h"
#include "workbench/methods/Method.h"
#include "workbench/terminal/texts.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <memory>
#include <string>

// A sentence on each method, from its row.
static std::string methodsText() {
    std::string text = "By hand: ";
    for (const Method* method : Method::of(FendraSettings::deconvolution)) {
        text += fmt::format("{} {}. ", method->word, method->about);
    }
    return text;
}

static void addDeconvolve(CLI::App& program) {
    CLI::App& command = *program.add_subcommand(
        "deconvolve",
        "Remove a known kernel from a measured signal.\n"
        "With --auto the method, and how far it goes, are chosen from the data: a result as sharp "
        "as the noise allows, with its uncertainty where the output is text. " +
            methodsText() + lagText);
    command.footer(
        "  fendra deconvolve measured.csv kernel.csv --auto -o restored.csv\n"
        "  fendra deconvolve wet.wav room.wav -o dry.wav              with little noise\n"
        "  fendra deconvolve lines.csv peak.csv --method van-cittert --max-iterations 30\n"
        "  fendra deconvolve recorded.wav sweep.wav --auto --frequencies 60:7400 -o room.wav\n"
        "  fendra deconvolve lines.csv peak.csv --graph lines.graph   with settings that are "
        "kept\n");
    const auto deconvolve =
        std::make_shared<FoldCommand>("deconvolve", FendraSettings::deconvolution);
    deconvolve->addTo(command, "SIGNAL", "KERNEL");
    command.callback([deconvolve] { deconvolve->run(); });
}

extern const Command deconvolveCommand = {addDeconvolve};
