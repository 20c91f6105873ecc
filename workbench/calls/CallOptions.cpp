#include "workbench/calls/CallOptions.h"

#include "workbench/messages/Printable.h"
#include "workbench/terminal/complaint.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <iterator>

// Anything else would be read as another word than the option that it was meant for.
static bool isName(const std::string& name) {
    return name.size() > 1 && name.front() != '-' &&
           std::all_of(name.begin(), name.end(), [](char letter) {
               return (letter >= 'a' && letter <= 'z') || letter == '-';
           });
}

static std::string wordOf(const CallOption& option) {
    if (!isName(option.name)) {
        throw WrongOption(fmt::format(
            "\"{}\" is not an option: give the word of the command line without dashes, as in "
            "max-iterations",
            printable(option.name)));
    }
    return fmt::format("--{}{}{}", option.name, option.value.empty() ? "" : "=", option.value);
}

void readOptions(const std::string& command, const CallOptions& options,
                 const std::function<void(CLI::App& command)>& add,
                 const std::function<void()>& act) {
    std::vector<std::string> words = {command};
    std::transform(options.begin(), options.end(), std::back_inserter(words), wordOf);
    CLI::App program("", "fendra");
    CLI::App& subcommand = *program.add_subcommand(command);
    subcommand.set_help_flag();
    add(subcommand);
    try {
        program.parse(std::vector<std::string>(words.rbegin(), words.rend()));
        act();
    } catch (const CLI::ParseError& error) {
        throw WrongOption(printable(complaint(program, error, words)));
    }
}
