#include "workbench/commands/Command.h"
#include "workbench/commands/FoldCommand.h"
#include "workbench/commands/MethodOptions.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <string>

void addDeconvolve(CLI::App& program) {
    CLI::App& command = *program.add_subcommand(
        "deconvolve",
        "Take a known kernel out of a measured signal.\n"
        "spectral divides the spectra: exact where the kernel's spectrum keeps away from zero, a "
        "magnifier of noise where it does not. van-cittert iterates: for smooth kernels, and "
        "robust "
        "against noise if it is stopped early. pseudo-inverse convolves with a filter that is as "
        "close to the kernel's inverse as its length allows: put the kernel's centre into the "
        "middle. spectral and pseudo-inverse undo a convolution in the frequency domain in place, "
        "van-cittert one in the time domain.");
    command.footer(
        "  fendra deconvolve wet.wav room.wav -o dry.wav\n"
        "  fendra deconvolve measured.csv kernel.csv --truth original.csv -o restored.csv\n"
        "  fendra deconvolve lines.csv peak.csv --method van-cittert --max-iterations 30\n"
        "  fendra deconvolve far.csv near.csv --method pseudo-inverse --scaling central\n"
        "  fendra deconvolve lines.csv peak.csv --graph lines.graph      settings that are kept\n");
    struct Deconvolve : FoldCommand {
        MethodOptions options;
    };
    const auto deconvolve = std::make_shared<Deconvolve>();
    deconvolve->name = "deconvolve";
    deconvolve->options.addMethod(command);
    deconvolve->addOptions(command, "SIGNAL", "KERNEL");
    deconvolve->options.addSettings(command);
    deconvolve->addGraph(command);
    command.callback([deconvolve] {
        deconvolve->method = deconvolve->options.method;
        deconvolve->methodWords = deconvolve->options.words();
        deconvolve->settings = deconvolve->options.settings(deconvolve->method);
        deconvolve->run();
    });
}
