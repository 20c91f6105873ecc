#include "workbench/commands/Command.h"
#include "workbench/commands/FoldCommand.h"
#include "workbench/terminal/texts.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <string>

static void addConvolve(CLI::App& program) {
    CLI::App& command = *program.add_subcommand(
        "convolve",
        std::string("Convolve two signals.\n") +
            "The result is periodic with the length of the longer one unless --pad is given. " +
            lagText);
    command.footer(
        "  fendra convolve speech.wav room.wav -o wet.wav\n"
        "  fendra convolve spectrum.csv peak.csv --pad -o linear.csv\n"
        "  fendra convolve hour.wav room.wav --pad -o wet.w64   of any length, in constant memory\n"
        "  sensor | fendra convolve - taps.txt --pad > smooth.csv   as the samples come\n");
    const auto convolve = std::make_shared<FoldCommand>("convolve", FendraSettings::convolution);
    convolve->addTo(command, "A", "B");
    command.callback([convolve] { convolve->run(); });
}

extern const Command convolveCommand = {addConvolve};
