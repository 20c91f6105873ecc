#include "workbench/commands/Command.h"
#include "workbench/commands/CommandBench.h"
#include "workbench/desktop/WindowLibrary.h"
#include "workbench/files/disk/OutputFile.h"
#include "workbench/messages/Failure.h"
#include "workbench/system/offer.h"
#include "workbench/terminal/InputOptions.h"
#include "workbench/terminal/help.h"
#include "workbench/terminal/values.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <memory>
#include <string>

namespace {

struct ViewCommand {
    std::string signal, kernel, colours = "system", picture, module;
    bool replace = false;

    void run() const;
};

}  // namespace

// A picture needs no display.
void ViewCommand::run() const {
    CommandBench bench(module);
    WindowOrder order{signal, kernel, colours, picture};
    if (picture.empty()) {
        try {
            WindowLibrary::requireDisplay();
        } catch (const Failure& failure) {
            throw Failure(fmt::format(
                "{}{}", failure.what(),
                Offer::here.windows ? "; paint pictures with fendra plot, or with --plot" : ""));
        }
    } else {
        const OutputFile refusesExisting(SourceName::ofOutput(picture), replace);
    }
    const int status = WindowLibrary().openWindow(bench, order);
    if (status != 0) {
        throw CLI::RuntimeError(status);
    }
}

static void addView(CLI::App& program) {
    CLI::App& command = *program.add_subcommand(
        "view",
        "Open the window in which signals are looked at and worked on.\n"
        "Shows signal, kernel, result, residual and spectra, runs anew when an option changes, and "
        "hands over the command line that gives the same result, and the picture. Needs a "
        "display.");
    command.group(groupWhere(Offer::here.windows, command.get_group()));
    command.footer(
        "  fendra view measured.csv kernel.csv\n"
        "  fendra view speech.wav                      the kernel is opened in the window\n");
    const auto view = std::make_shared<ViewCommand>();
    command.add_option("SIGNAL", view->signal, signalFileText)->type_name("FILE");
    command.add_option("KERNEL", view->kernel, signalFileText)->type_name("FILE");
    command.add_option("--colours", view->colours, "of the window")
        ->check(choice({"system", "light", "dark"}))
        ->type_name("")
        ->capture_default_str();
    CLI::Option* const picture =
        command
            .add_option("--picture", view->picture,
                        "paint the window into a PNG file once the run has ended, instead of "
                        "showing it")
            ->type_name("FILE");
    command.add_flag("--force", view->replace, "replace the picture if it exists")->needs(picture);
    command
        .add_option("--module", view->module,
                    "the module library to run; default: the one beside the program")
        ->type_name("FILE");
    command.callback([view] { view->run(); });
}

extern const Command viewCommand = {addView};
