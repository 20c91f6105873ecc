#include "workbench/commands/Command.h"
#include "workbench/terminal/completionScript.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

static void addCompletion(CLI::App& program) {
    CLI::App& command =
        *program.add_subcommand("completion", "Print a completion script for bash.");
    command.footer("  source <(fendra completion)\n");
    command.callback([&program] { fmt::print("{}", completionScript(program)); });
}

extern const Command completionCommand = {addCompletion};
