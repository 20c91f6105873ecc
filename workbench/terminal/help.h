#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

// The texts of a command as help, manual page and completion show them. A command's description is
// a summary in its first line and details behind it; its footer holds examples, one a line.
std::string summary(const CLI::App& command);
std::string details(const CLI::App& command);

// "batch convolve": the words that lead to a command.
std::string fullName(const CLI::App& command);

// The group of options and commands that are there to refuse, because this system lacks what they
// are for. It is not empty, since the parser keeps the names of options without a group to itself.
inline constexpr const char* lackingGroup = "Not on this system";
// The group of an option or command that not every system has.
std::string groupWhere(bool isHere, const std::string& group);

// The options and commands of a command, except for those of lackingGroup.
std::vector<const CLI::Option*> shownOptions(const CLI::App& command);
std::vector<const CLI::App*> shownCommands(const CLI::App& command);

// "-o", "--output"; none for an argument without a name.
std::vector<std::string> optionNames(const CLI::Option& option);
// The words that an option's value is one of, if it is a choice.
std::vector<std::string> choices(const CLI::Option& option);
// "-o, --output FILE", "--per block|packet", "SIGNAL"
std::string term(const CLI::Option& option);
// Description and default value.
std::string explanation(const CLI::Option& option);

// --help: examples first, then usage, description, arguments, options and commands, 80 columns
// wide.
class Help : public CLI::FormatterBase {
public:
    std::string make_help(const CLI::App* command, std::string name,
                          CLI::AppFormatMode mode) const override;
};
