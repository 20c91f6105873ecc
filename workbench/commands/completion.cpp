#include "workbench/commands/Command.h"
#include "workbench/system/offer.h"
#include "workbench/terminal/completionScript.h"
#include "workbench/terminal/values.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <memory>
#include <string>

static void addCompletion(CLI::App& program) {
    CLI::App& command = *program.add_subcommand(
        "completion",
        "Print a completion script for a shell.\n"
        "It offers commands, options, the words that a value is one of, and files.");
    command.footer(
        "  source <(fendra completion)                              bash, for this session\n"
        "  source <(fendra completion zsh)                          zsh, after compinit\n"
        "  fendra completion fish | source                          fish\n"
        "  fendra completion powershell | Out-String | Invoke-Expression\n");
    const auto shell = std::make_shared<std::string>(Offer::here.shell);
    command.add_option("SHELL", *shell, "the shell")
        ->check(choice(Shell::words()))
        ->type_name("")
        ->capture_default_str();
    command.callback([&program, shell] {
        fmt::print("{}", Shell::scriptFor(*shell, CompletionTable(program)));
    });
}

extern const Command completionCommand = {addCompletion};
