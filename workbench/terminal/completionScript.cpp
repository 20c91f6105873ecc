#include "workbench/terminal/completionScript.h"

#include "workbench/terminal/help.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <string>
#include <vector>

static std::string optionWords(const CLI::App& command) {
    std::vector<std::string> words;
    for (const CLI::Option* option : command.get_options()) {
        const std::vector<std::string> names = optionNames(*option);
        words.insert(words.end(), names.begin(), names.end());
    }
    return fmt::format("{}", fmt::join(words, " "));
}

// Case branches for the word behind an option: its choices, or nothing for a number. Files are what
// the script offers anyway.
static std::string valueBranches(const CLI::App& command) {
    std::string branches;
    for (const CLI::Option* option : command.get_options()) {
        std::vector<std::string> words = choices(*option);
        std::erase(words, "NUMBER");  // stands for what cannot be offered
        if (option->get_positional() || option->get_expected_max() == 0 ||
            option->get_type_name() == "FILE" || option->get_type_name() == "FOLDER") {
            continue;
        }
        for (const std::string& name : optionNames(*option)) {
            branches += fmt::format("        \"{}:{}\") words=\"{}\" ;;\n", fullName(command), name,
                                    fmt::join(words, " "));
        }
    }
    return branches;
}

// A command with commands of its own: the next word is one of these, or completes the name of one.
static std::string commandBranch(const CLI::App& command) {
    std::string names;
    for (const CLI::App* subcommand : command.get_subcommands({})) {
        names += subcommand->get_name() + " ";
    }
    return names.empty() ? ""
                         : fmt::format(
                               "        {0})\n"
                               "            if [ \"$COMP_CWORD\" -eq 2 ]; then\n"
                               "                mapfile -t COMPREPLY < <(compgen -W \"{1}{2}\" -- "
                               "\"$current\")\n"
                               "                return\n"
                               "            fi\n"
                               "            case \" {1}\" in\n"
                               "                *\" ${{COMP_WORDS[2]}} \"*) command+=\" "
                               "${{COMP_WORDS[2]}}\" ;;\n"
                               "            esac ;;\n",
                               command.get_name(), names, optionWords(command));
}

// Its places are for the names of the commands, the branches of commands with commands of their
// own, of values, and of options.
static constexpr const char* scriptText = R"(# bash completion for fendra
_fendra() {{
    local current=${{COMP_WORDS[COMP_CWORD]}} command=${{COMP_WORDS[1]}} words= key= head=
    local before=$((COMP_CWORD - 1))
    if [ "$COMP_CWORD" -eq 1 ]; then
        mapfile -t COMPREPLY < <(compgen -W "{} --help --version" -- "$current")
        return
    fi
    case "$command" in
{}    esac
    COMPREPLY=()
    # KEY=VALUE comes as three words, or two while there is no value; OPTION=VALUE likewise.
    if [ "$current" = = ]; then
        current= key=${{COMP_WORDS[before]}}= before=$((before - 1))
    elif [ "${{COMP_WORDS[before]}}" = = ]; then
        key=${{COMP_WORDS[before-1]}}= before=$((before - 2))
    fi
    [[ $key != --* ]] || {{ key= before=$((before + 1)); }}
    case "$command:${{COMP_WORDS[before]}}" in
{}        *) case "$command:$current" in
            *:-*) ;;
            *)  # a name as it is, without what protects it from the shell
                current=${{current#[\"\']}}
                mapfile -t COMPREPLY < <(compgen -f -- "${{current//\\/}}")
                return ;;
            esac
            case "$command" in
{}            esac ;;
    esac
    # Of a list the last entry is completed, by what it does not have yet.
    if [[ $current = *,* ]]; then
        head=${{current%,*}}, current=${{current##*,}} words=" $words "
        for before in ${{head//,/ }}; do words=${{words/ $before / }}; done
    fi
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$key$current")
    COMPREPLY=("${{COMPREPLY[@]#"$key"}}")
    COMPREPLY=("${{COMPREPLY[@]/#/$head}}")
    [ -n "${{COMPREPLY[0]%%*=}}" ] || compopt -o nospace 2>/dev/null
}}
complete -o filenames -F _fendra fendra
)";

std::string completionScript(const CLI::App& program) {
    std::string names, nested, options, values;
    const auto add = [&](const CLI::App& command) {
        options += fmt::format("            \"{}\") words=\"{}\" ;;\n", fullName(command),
                               optionWords(command));
        values += valueBranches(command);
    };
    for (const CLI::App* command : program.get_subcommands({})) {
        names += (names.empty() ? "" : " ") + command->get_name();
        nested += commandBranch(*command);
        add(*command);
        for (const CLI::App* subcommand : command->get_subcommands({})) {
            add(*subcommand);
        }
    }
    values += fmt::format("        help:help) words=\"{}\" ;;\n", names);
    return fmt::format(scriptText, names, nested, values, options);
}
