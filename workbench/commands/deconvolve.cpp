#include "workbench/commands/Command.h"
#include "workbench/commands/FoldCommand.h"
#include "workbench/commands/values.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <string>

void addDeconvolve(CLI::App& program) {
    CLI::App& command = *program.add_subcommand(
        "deconvolve",
        "Take a known kernel out of a measured signal.\n"

        "Finds the signal whose periodic convolution with KERNEL gives SIGNAL. spectral divides "
        "the "
        "spectra: exact where the kernel's spectrum keeps away from zero, and a "
        "magnifier of noise where it does not. It undoes a convolution in the "
        "frequency domain in place; one in the time domain comes back one sample late.");
    command.footer(
        "  fendra deconvolve wet.wav room.wav -o dry.wav\n"
        "  fendra deconvolve measured.csv kernel.csv --truth original.csv -o restored.csv\n");
    struct Deconvolve : FoldCommand {
        std::string way = "spectral";
    };
    const auto deconvolve = std::make_shared<Deconvolve>();
    deconvolve->name = "deconvolve";
    deconvolve->settings.direction = ModuleSettings::deconvolution;
    command.add_option("--method", deconvolve->way, "how to deconvolve")
        ->check(choice({"spectral"}))
        ->type_name("")
        ->capture_default_str();
    deconvolve->addOptions(command, "SIGNAL", "KERNEL");
    command.callback([deconvolve] {
        deconvolve->method = "--method " + deconvolve->way;
        deconvolve->run();
    });
}
