#include "workbench/commands/Command.h"
#include "workbench/terminal/manualPage.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

static void addManual(CLI::App& program) {
    CLI::App& command = *program.add_subcommand("manual", "Print the manual page.");
    command.footer("  fendra manual | man -l -\n");
    command.callback([&program] { fmt::print("{}", manualPage(program)); });
}

extern const Command manualCommand = {addManual};
