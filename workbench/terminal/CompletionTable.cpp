#include "workbench/terminal/CompletionTable.h"

#include "workbench/terminal/help.h"

#include <fmt/format.h>

#include <utility>

std::vector<std::string> CompletedCommand::optionNames() const {
    std::vector<std::string> all;
    for (const CompletedOption& option : options) {
        all.insert(all.end(), option.names.begin(), option.names.end());
    }
    return all;
}

static CompletedValue valueOf(const CLI::Option& option) {
    using Kind = CompletedValue::Kind;
    const std::string type = option.get_type_name();
    CompletedValue value;
    value.words = choices(option);
    std::erase_if(value.words, [](const std::string& word) {
        return word.empty() || word == "NUMBER";  // which stands for what cannot be offered
    });
    value.isList = option.get_delimiter() == ',';
    if (option.get_expected_max() == 0) {
        value.kind = Kind::none;
    } else if (!value.words.empty()) {
        value.kind = Kind::words;
    } else if (type == "FILE" || (option.get_positional() && !type.empty())) {
        value.kind = Kind::file;
    } else {
        value.kind = type == "FOLDER" ? Kind::folder : Kind::number;
    }
    return value;
}

// A description's first clause, which is what there is room for beside a name.
static std::string beginning(const std::string& text) {
    constexpr std::size_t most = 60;
    const std::string clause = text.substr(0, text.find_first_of(";:("));
    if (clause.size() <= most) {
        return clause.substr(0, clause.find_last_not_of(' ') + 1);
    }
    return clause.substr(0, clause.rfind(' ', most - 3)) + " ...";
}

static CompletedCommand commandOf(const CLI::App& app) {
    CompletedCommand command{fullName(app), summary(app), {}, {}, {}};
    for (const CLI::Option* option : shownOptions(app)) {
        if (option->get_positional()) {
            command.arguments.push_back(valueOf(*option));
        } else {
            command.options.push_back(
                {optionNames(*option), beginning(option->get_description()), valueOf(*option)});
        }
    }
    for (const CLI::App* below : shownCommands(app)) {
        command.commands.push_back(below->get_name());
    }
    return command;
}

CompletionTable::CompletionTable(const CLI::App& app) : program(commandOf(app)) {
    program.name.clear();
    for (const CLI::App* command : shownCommands(app)) {
        commands.push_back(commandOf(*command));
        for (const CLI::App* below : shownCommands(*command)) {
            commands.push_back(commandOf(*below));
        }
    }
    for (CompletedCommand& command : commands) {
        if (command.name == "help") {  // whose argument is any of them
            command.arguments = {{CompletedValue::Kind::words, program.commands, false}};
        }
    }
}
