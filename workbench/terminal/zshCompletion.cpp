#include "workbench/terminal/completionScript.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

// Within single quotes, and before the signs that mean something to _arguments and _describe.
static std::string zshText(const std::string& text) {
    std::string result;
    for (const char c : text) {
        if (c == '\'') {
            result += "'\\''";
        } else {
            result +=
                (c == '[' || c == ']' || c == ':' || c == '\\' ? "\\" : "") + std::string(1, c);
        }
    }
    return result;
}

// What _arguments does for a value; a leading blank keeps its own options away from the function.
static std::string zshAction(const CompletedValue& value) {
    switch (value.kind) {
        case CompletedValue::Kind::none:
            return "";
        case CompletedValue::Kind::words:
            return fmt::format(":value: _fendra_{} {}", value.isList ? "list" : "words",
                               fmt::join(value.words, " "));
        case CompletedValue::Kind::file:
            return ":file:_files";
        case CompletedValue::Kind::folder:
            return ":folder:_files -/";
        default:
            return ":value: ";
    }
}

// '(-o --output)'{-o,--output=}'[about]:file:_files'
static std::string zshOption(const CompletedOption& option) {
    const bool takesValue = option.value.kind != CompletedValue::Kind::none;
    std::vector<std::string> forms;
    for (const std::string& name : option.names) {
        forms.push_back(name + (takesValue && name.starts_with("--") ? "=" : ""));
    }
    const std::string rest = "[" + zshText(option.about) + "]" + zshAction(option.value);
    return forms.size() == 1
               ? fmt::format(" \\\n                '{}{}'", forms.front(), rest)
               : fmt::format(" \\\n                '({})'{{{}}}'{}'", fmt::join(option.names, " "),
                             fmt::join(forms, ","), rest);
}

static std::string zshArguments(const CompletedCommand& command) {
    std::string lines;
    for (const CompletedValue& value : command.arguments) {
        lines +=
            fmt::format(" \\\n                '{}{}'",
                        value.kind == CompletedValue::Kind::file ? "*" : "1", zshAction(value));
        if (value.kind == CompletedValue::Kind::file) {
            break;  // one line stands for all files
        }
    }
    return lines;
}

static std::string zshBranch(const CompletedCommand& command) {
    std::string lines;
    for (const CompletedOption& option : command.options) {
        lines += zshOption(option);
    }
    lines += zshArguments(command);
    if (!command.commands.empty()) {
        lines +=
            fmt::format(" \\\n                '1::command:({})'", fmt::join(command.commands, " "));
    }
    return fmt::format("        '{}')\n            _arguments -s -S{} ;;\n", command.name, lines);
}

// Its places are for the commands with what they are about, those with commands of their own, and
// the branches of all.
static constexpr const char* zshScript = R"(#compdef fendra
# zsh completion for fendra

# One of these words; after KEY= a number follows.
_fendra_words() {{
    compadd -S '' -- ${{(M)@:#*=}}
    compadd -- ${{@:#*=}}
}}

# Some of these words, separated by commas.
_fendra_list() {{
    _values -s , value $@
}}

_fendra() {{
    local -a names=({})
    if (( CURRENT == 2 )); then
        if [[ $PREFIX = -* ]]; then
            _arguments{}
        else
            _describe command names
        fi
        return
    fi
    local command=$words[2]
    shift words
    (( CURRENT-- ))
    case "$command $words[2]" in
{}    esac
    case $command in
{}    esac
}}

# As a function that is loaded when it is first called, or as a script that is sourced.
if [[ $zsh_eval_context[-1] = loadautofunc ]]; then
    _fendra "$@"
else
    compdef _fendra fendra
fi
)";

std::string zshCompletion(const CompletionTable& table) {
    std::string names, nested, branches, options;
    for (const CompletedCommand& command : table.commands) {
        if (command.name.find(' ') == std::string::npos) {
            names += fmt::format("\n        '{}:{}'", command.name, zshText(command.about));
        }
        for (const std::string& below : command.commands) {
            nested += fmt::format(
                "        '{0} {1}')\n"
                "            if (( CURRENT > 2 )); then\n"
                "                command='{0} {1}'\n"
                "                shift words\n"
                "                (( CURRENT-- ))\n"
                "            fi ;;\n",
                command.name, below);
        }
        branches += zshBranch(command);
    }
    for (const CompletedOption& option : table.program.options) {
        options += zshOption(option);
    }
    return fmt::format(zshScript, names, options, nested, branches);
}
