#include "workbench/commands/Command.h"
#include "workbench/terminal/values.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <memory>
#include <string>

static void addHelp(CLI::App& program) {
    CLI::App& command =
        *program.add_subcommand("help", "Show the help of the program or a command.");
    command.footer(
        "  fendra help\n"
        "  fendra help convolve     as fendra convolve --help\n");
    const auto name = std::make_shared<std::string>();
    command.add_option("COMMAND", *name, "the command; none: the program")
        ->check(CLI::Validator(
            [&program](std::string& word) {
                std::vector<std::string> names;
                for (const CLI::App* other : program.get_subcommands({})) {
                    names.push_back(other->get_name());
                }
                return choice(names)(word);
            },
            ""))
        ->type_name("");
    command.callback([&program, name] {
        const CLI::App& shown = name->empty() ? program : *program.get_subcommand(*name);
        // Not shown.help(): that of the program would be the help of the command under way.
        fmt::print("{}", shown.get_formatter()->make_help(&shown, "", CLI::AppFormatMode::Normal));
    });
}

extern const Command helpCommand = {addHelp};
