#include "workbench/terminal/help.h"

#include "workbench/terminal/texts.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <cstddef>
#include <map>
#include <sstream>

std::string summary(const CLI::App& command) {
    const std::string text = command.get_description();
    return text.substr(0, text.find('\n'));
}

std::string details(const CLI::App& command) {
    const std::string text = command.get_description();
    const std::size_t lineFeed = text.find('\n');
    return lineFeed == std::string::npos ? "" : text.substr(lineFeed + 1);
}

std::string fullName(const CLI::App& command) {
    std::string name = command.get_name();
    const CLI::App* above = command.get_parent();
    for (; above != nullptr && above->get_parent() != nullptr; above = above->get_parent()) {
        name = fmt::format("{} {}", above->get_name(), name);
    }
    return name;
}

std::vector<const CLI::Option*> shownOptions(const CLI::App& command) {
    return command.get_options(
        [](const CLI::Option* option) { return option->get_group() != lackingGroup; });
}

std::vector<const CLI::App*> shownCommands(const CLI::App& command) {
    return command.get_subcommands(
        [](const CLI::App* below) { return below->get_group() != lackingGroup; });
}

std::string groupWhere(bool isHere, const std::string& group) {
    return isHere ? group : lackingGroup;
}

std::vector<std::string> optionNames(const CLI::Option& option) {
    std::vector<std::string> names;
    for (const std::string& name : option.get_snames()) {
        names.push_back("-" + name);
    }
    for (const std::string& name : option.get_lnames()) {
        names.push_back("--" + name);
    }
    return names;
}

// The description of the option's validator, {time,frequency}, is where they stand.
std::vector<std::string> choices(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    const std::size_t open = type.find('{'), close = type.find('}');
    if (open == std::string::npos || close == std::string::npos) {
        return {};
    }
    return CLI::detail::split(type.substr(open + 1, close - open - 1), ',');
}

std::string term(const CLI::Option& option) {
    if (option.get_positional()) {
        return option.get_name(true);
    }
    const std::string type = option.get_type_name(), name = type.substr(0, type.find(":{"));
    const std::string value =
        name.empty() ? fmt::format("{}", fmt::join(choices(option), "|")) : name;
    return fmt::format("{}{}{}", fmt::join(optionNames(option), ", "), value.empty() ? "" : " ",
                       value);
}

std::string explanation(const CLI::Option& option) {
    const std::string standard = option.get_default_str();
    return option.get_description() +
           (standard.empty() ? "" : fmt::format(" (default: {})", standard));
}

// Words filled into lines of 80 columns that begin at an indent; the first line is taken to have
// been begun already.
static std::string filled(const std::string& text, std::size_t indent) {
    constexpr std::size_t width = 80;
    std::string result;
    std::size_t column = indent;
    std::istringstream words(text);
    for (std::string word; words >> word; column += word.size()) {
        if (column > indent && column + 1 + word.size() > width) {
            result += "\n" + std::string(indent, ' ');
            column = indent;
        } else if (column > indent) {
            result += " ";
            ++column;
        }
        result += word;
    }
    return result;
}

static std::string entry(const std::string& left, const std::string& right) {
    constexpr std::size_t indent = 20;
    const bool fits = left.size() + 4 <= indent;
    return fmt::format(
        "  {}{}{}\n", left,
        fits ? std::string(indent - 2 - left.size(), ' ') : "\n" + std::string(indent, ' '),
        filled(right, indent));
}

static std::string argumentEntries(const CLI::App& command) {
    std::string text;
    for (const CLI::Option* option : shownOptions(command)) {
        if (option->get_positional()) {
            text += entry(term(*option), explanation(*option));
        }
    }
    return text;
}

// The options by their groups, in the order in which the groups come up; those of no group, which
// are called "Options", last.
static std::string optionEntries(const CLI::App& command) {
    const std::string noGroup = "Options";
    std::vector<std::string> groups;
    std::map<std::string, std::string> entries;
    for (const CLI::Option* option : shownOptions(command)) {
        if (!option->get_positional()) {
            const std::string group = option->get_group();
            if (group != noGroup && !entries.contains(group)) {
                groups.push_back(group);
            }
            entries[group] += entry(term(*option), explanation(*option));
        }
    }
    groups.push_back(noGroup);
    std::string text;
    for (const std::string& group : groups) {
        const std::string title = group == noGroup && groups.size() > 1 ? "Other options" : group;
        text += fmt::format("\n{}:\n{}", title, entries[group]);
    }
    return text;
}

static std::string usage(const CLI::App& command) {
    const bool isProgram = command.get_parent() == nullptr;
    std::string line = isProgram ? "fendra COMMAND" : "fendra " + fullName(command);
    line += !isProgram && !shownCommands(command).empty() ? " COMMAND" : "";
    for (const CLI::Option* option : shownOptions(command)) {
        if (option->get_positional()) {
            const std::string name = option->get_name(true);
            line += option->get_required() ? " " + name : " [" + name + "]";
        }
    }
    return "Usage: " + line + " [OPTION...]\n";
}

std::string Help::make_help(const CLI::App* command, std::string /*name*/,
                            CLI::AppFormatMode /*mode*/) const {
    std::string text =
        fmt::format("Examples:\n{}\n{}\n{}\n", command->get_footer(), usage(*command),
                    filled(summary(*command) + " " + details(*command), 0));
    const std::string arguments = argumentEntries(*command);
    text += arguments.empty() ? "" : "\nArguments:\n" + arguments;
    text += optionEntries(*command);
    const std::vector<const CLI::App*> subcommands = shownCommands(*command);
    text += subcommands.empty() ? "" : "\nCommands:\n";
    for (const CLI::App* subcommand : subcommands) {
        text += entry(subcommand->get_name(), summary(*subcommand));
    }
    if (command->get_parent() != nullptr) {
        return text;
    }
    return text + fmt::format("\n{}\n\n{}\n", filled("Files: " + filesText(), 0),
                              filled(std::string("Exit status: ") + exitText, 0));
}
