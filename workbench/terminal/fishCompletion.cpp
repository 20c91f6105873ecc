#include "workbench/terminal/completionScript.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

// A word of fish, in single quotes.
static std::string fishText(const std::string& text) {
    std::string result = "'";
    for (const char c : text) {
        result += (c == '\'' || c == '\\' ? "\\" : "") + std::string(1, c);
    }
    return result + "'";
}

// The options of complete for what follows: -x: this and no files.
static std::string fishValue(const CompletedValue& value) {
    switch (value.kind) {
        case CompletedValue::Kind::none:
            return "";
        case CompletedValue::Kind::words:
            return value.isList
                       ? fmt::format(" -x -a '(__fish_append , {})'", fmt::join(value.words, " "))
                       : fmt::format(" -x -a '{}'", fmt::join(value.words, " "));
        case CompletedValue::Kind::file:
            return " -r -F";
        case CompletedValue::Kind::folder:
            return " -x -a '(__fish_complete_directories)'";
        default:
            return " -x";
    }
}

static std::string fishOption(const std::string& where, const CompletedOption& option) {
    std::string names;
    for (const std::string& name : option.names) {
        names += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
    }
    return fmt::format("complete -c fendra -n '{}'{}{} -d {}\n", where, names,
                       fishValue(option.value), fishText(option.about));
}

static std::string fishCommand(const CompletedCommand& command) {
    const std::string where = "__fendra_is " + command.name;
    std::string text;
    for (const std::string& below : command.commands) {
        text += fmt::format("complete -c fendra -n '{}' -f -a {}\n", where, below);
    }
    for (const CompletedValue& argument : command.arguments) {
        if (argument.kind == CompletedValue::Kind::words) {
            text += fmt::format("complete -c fendra -n '{}' -f -a '{}'\n", where,
                                fmt::join(argument.words, " "));
        }
    }
    if (command.arguments.empty()) {
        text += fmt::format("complete -c fendra -n '{}' -f\n", where);
    }
    for (const CompletedOption& option : command.options) {
        text += fishOption(where, option);
    }
    return text;
}

// Its place is for the names of commands below others, as patterns.
static constexpr const char* fishScript = R"(# fish completion for fendra

# Whether the words so far are the command of this name; none: whether there is none yet.
function __fendra_is
    set -l words (commandline -opc)
    set -l command $words[2]
    switch "$words[2..3]"
        case {}
            set command $words[2..3]
    end
    test "$command" = "$argv"
end

)";

std::string fishCompletion(const CompletionTable& table) {
    std::string below, text;
    for (const CompletedCommand& command : table.commands) {
        if (command.name.find(' ') == std::string::npos) {
            text += fmt::format("complete -c fendra -n __fendra_is -f -a {} -d {}\n", command.name,
                                fishText(command.about));
        } else {
            below += (below.empty() ? "" : " ") + fishText(command.name);
        }
    }
    for (const CompletedOption& option : table.program.options) {
        text += fishOption("__fendra_is", option);
    }
    for (const CompletedCommand& command : table.commands) {
        text += fishCommand(command);
    }
    return fmt::format(fishScript, below) + text;
}
