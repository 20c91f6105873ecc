#include "workbench/terminal/completionScript.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

static std::string spaced(const std::vector<std::string>& words) {
    return fmt::format("{}", fmt::join(words, " "));
}

static bool isFileName(const CompletedValue& value) {
    return value.kind == CompletedValue::Kind::file || value.kind == CompletedValue::Kind::folder;
}

// Case branches for the word after an option, or after the command where its first argument is one
// of some words: these, or nothing for a number. Files are what the script offers anyway.
static std::string bashValues(const CompletedCommand& command) {
    std::string branches;
    for (const CompletedOption& option : command.options) {
        if (option.value.kind == CompletedValue::Kind::none || isFileName(option.value)) {
            continue;
        }
        for (const std::string& name : option.names) {
            branches += fmt::format("        \"{}:{}\") words=\"{}\" ;;\n", command.name, name,
                                    spaced(option.value.words));
        }
    }
    if (!command.arguments.empty() && !command.arguments.front().words.empty()) {
        branches += fmt::format("        \"{0}:{0}\") words=\"{1}\" ;;\n", command.name,
                                spaced(command.arguments.front().words));
    }
    return branches;
}

// A command with commands of its own: the next word is one of these, or completes the name of one.
static std::string bashCommands(const CompletedCommand& command) {
    static constexpr const char* text = R"(        {0})
            if [ "$COMP_CWORD" -eq 2 ]; then
                mapfile -t COMPREPLY < <(compgen -W "{1} {2}" -- "$current")
                return
            fi
            case " {1} " in
                *" ${{COMP_WORDS[2]}} "*) command+=" ${{COMP_WORDS[2]}}" ;;
            esac ;;
)";
    return command.commands.empty() ? ""
                                    : fmt::format(text, command.name, spaced(command.commands),
                                                  spaced(command.optionNames()));
}

// Its places are for the names of the commands, the branches of commands with commands of their
// own, of values, and of options.
static constexpr const char* bashText = R"(# bash completion for fendra
_fendra() {{
    local current=${{COMP_WORDS[COMP_CWORD]}} command=${{COMP_WORDS[1]}} words= key= head=
    local before=$((COMP_CWORD - 1))
    if [ "$COMP_CWORD" -eq 1 ]; then
        mapfile -t COMPREPLY < <(compgen -W "{}" -- "$current")
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

std::string bashCompletion(const CompletionTable& table) {
    std::string nested, options, values;
    for (const CompletedCommand& command : table.commands) {
        nested += bashCommands(command);
        values += bashValues(command);
        options += fmt::format("            \"{}\") words=\"{}\" ;;\n", command.name,
                               spaced(command.optionNames()));
    }
    std::vector<std::string> first = table.program.commands;
    for (const CompletedOption& option : table.program.options) {
        first.push_back(option.names.back());
    }
    return fmt::format(bashText, spaced(first), nested, values, options);
}
