#include "workbench/commands/Command.h"
#include "workbench/commands/FoldCommand.h"
#include "workbench/methods/Setting.h"
#include "workbench/terminal/texts.h"
#include "workbench/terminal/values.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <string>

void addConvolve(CLI::App& program) {
    CLI::App& command = *program.add_subcommand(
        "convolve",
        std::string("Convolve two signals.\n") +
            "The result is periodic with the length of the longer one unless --pad is given. " +
            lagText);
    command.footer(
        "  fendra convolve speech.wav room.wav -o wet.wav\n"
        "  fendra convolve a.csv b.csv --domain time --pad -o linear.csv\n"
        "  fendra convolve long.wav filter.wav --block 65536 -o out.w64   in constant memory\n"
        "  sensor | fendra convolve - kernel.txt > smooth.csv\n");
    struct Convolve : FoldCommand {
        std::string domain = "frequency";
    };
    const auto convolve = std::make_shared<Convolve>();
    convolve->name = "convolve";
    command.add_option("--domain", convolve->domain, "where to work")
        ->check(choice(Setting::named("domain").words))
        ->type_name("")
        ->capture_default_str();
    convolve->addOptions(command, "A", "B");
    convolve->addGraph(command);
    command.callback([convolve] {
        convolve->method = convolve->domain;
        convolve->methodWords = "--domain " + convolve->domain;
        convolve->settings.method = convolve->domain == "time" ? FendraSettings::timeDomain
                                                               : FendraSettings::frequencyDomain;
        convolve->run();
    });
}
