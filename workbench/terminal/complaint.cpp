#include "workbench/terminal/complaint.h"

#include "workbench/messages/Printable.h"
#include "workbench/terminal/help.h"
#include "workbench/terminal/suggestion.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <utility>

// Options of older versions, and what stands for them now.
static constexpr std::array formerOptions = {
    std::pair{"--no-stop-at-minimum", "--stop-at-minimum off"}};

static std::vector<std::string> commandNames(const CLI::App& program) {
    std::vector<std::string> names;
    for (const CLI::App* command : program.get_subcommands({})) {
        names.push_back(command->get_name());
    }
    return names;
}

static std::vector<std::string> allOptionNames(const CLI::App& command) {
    std::vector<std::string> all;
    for (const CLI::Option* option : command.get_options()) {
        const std::vector<std::string> names = optionNames(*option);
        all.insert(all.end(), names.begin(), names.end());
    }
    return all;
}

std::string complaintOnFirst(const CLI::App& program, const std::vector<std::string>& words) {
    const std::vector<std::string> own = allOptionNames(program);
    const bool startsWithOption = !words.empty() && words.front().size() > 1 &&
                                  words.front().front() == '-' &&
                                  std::find(own.begin(), own.end(), words.front()) == own.end();
    if (!startsWithOption) {
        return "";
    }
    const std::string option = printable(words.front());
    return fmt::format(
        "\"{}\" stands before the command; options come after it, as in fendra "
        "COMMAND {}; see fendra --help",
        option, option);
}

static std::string complaintOnSurplus(const CLI::App& command, const std::string& word) {
    const std::string shown = printable(word);
    if (word.empty() || word.front() != '-') {
        return fmt::format("\"{}\" is one word too many", shown);
    }
    const auto* const former = std::find_if(formerOptions.begin(), formerOptions.end(),
                                            [&](const auto& row) { return word == row.first; });
    if (former != formerOptions.end() &&
        command.get_option_no_throw("--stop-at-minimum") != nullptr) {
        return fmt::format("\"{}\" is not used any more; give {}", shown, former->second);
    }
    return fmt::format("\"{}\" is not an option of {}{}", shown, fullName(command),
                       suggestion(word.substr(0, word.find('=')), allOptionNames(command)));
}

// The parser's own words on an option without a value, or with too many, do not say which it was.
static std::string complaintOnCount(const CLI::App& command, const CLI::ArgumentMismatch& error,
                                    const std::vector<std::string>& words) {
    std::string text = error.what();
    const std::string name = text.substr(0, text.find(':'));
    const CLI::Option* const option = command.get_option_no_throw(name);
    if (option == nullptr) {
        return text;
    }
    const std::vector<std::string> names = optionNames(*option);
    const auto given = std::count_if(words.begin(), words.end(), [&](const std::string& word) {
        return std::find(names.begin(), names.end(), word.substr(0, word.find('='))) != names.end();
    });
    return given > 1 ? fmt::format("{} is given {} times; give it once", name, given)
                     : fmt::format("{} needs a value: {}", name, term(*option));
}

// The command that was given, or the one of its own that was given after it.
static const CLI::App& innermost(const CLI::App& command) {
    const std::vector<const CLI::App*> own =
        command.get_subcommands([](const CLI::App* subcommand) { return subcommand->parsed(); });
    return own.empty() ? command : *own.back();
}

std::string complaint(const CLI::App& program, const CLI::ParseError& error,
                      const std::vector<std::string>& words) {
    const std::vector<CLI::App*> given = program.get_subcommands();
    const std::vector<std::string> surplus = program.remaining(true);
    if (given.empty() && surplus.empty()) {
        return fmt::format("missing command; one of {}; see fendra --help",
                           fmt::join(commandNames(program), ", "));
    }
    if (given.empty()) {
        return fmt::format("\"{}\" is not a command{}; see fendra --help",
                           printable(surplus.front()),
                           suggestion(surplus.front(), commandNames(program)));
    }
    const CLI::App& command = innermost(*given.back());
    const std::string help = fmt::format("; see fendra {} --help", fullName(command));
    if (!surplus.empty()) {
        return complaintOnSurplus(command, surplus.front()) + help;
    }
    const auto* const mismatch = dynamic_cast<const CLI::ArgumentMismatch*>(&error);
    return (mismatch != nullptr ? complaintOnCount(command, *mismatch, words) : error.what()) +
           help;
}
