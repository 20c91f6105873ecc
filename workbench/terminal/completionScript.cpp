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
            option->get_type_name() == "FILE") {
            continue;
        }
        for (const std::string& name : optionNames(*option)) {
            branches += fmt::format("        {}:{}) words=\"{}\" ;;\n", command.get_name(), name,
                                    fmt::join(words, " "));
        }
    }
    return branches;
}

std::string completionScript(const CLI::App& program) {
    std::string names, options, values;
    for (const CLI::App* command : program.get_subcommands({})) {
        names += (names.empty() ? "" : " ") + command->get_name();
        options += fmt::format("            {}) words=\"{}\" ;;\n", command->get_name(),
                               optionWords(*command));
        values += valueBranches(*command);
    }
    return fmt::format(
        "# bash completion for fendra\n"
        "_fendra() {{\n"
        "    local current=${{COMP_WORDS[COMP_CWORD]}} command=${{COMP_WORDS[1]}} words= key= "
        "head=\n"
        "    local before=$((COMP_CWORD - 1))\n"
        "    if [ \"$COMP_CWORD\" -eq 1 ]; then\n"
        "        mapfile -t COMPREPLY < <(compgen -W \"{} --help --version\" -- \"$current\")\n"
        "        return\n"
        "    fi\n"
        "    COMPREPLY=()\n"
        "    # KEY=VALUE comes as three words, or two while there is no value; OPTION=VALUE "
        "likewise.\n"
        "    if [ \"$current\" = = ]; then\n"
        "        current= key=${{COMP_WORDS[before]}}= before=$((before - 1))\n"
        "    elif [ \"${{COMP_WORDS[before]}}\" = = ]; then\n"
        "        key=${{COMP_WORDS[before-1]}}= before=$((before - 2))\n"
        "    fi\n"
        "    [[ $key != --* ]] || {{ key= before=$((before + 1)); }}\n"
        "    case \"$command:${{COMP_WORDS[before]}}\" in\n"
        "{}"
        "        *) case \"$command:$current\" in\n"
        "            *:-*) ;;\n"
        "            *)  # a name as it is, without what protects it from the shell\n"
        "                current=${{current#[\\\"\\']}}\n"
        "                mapfile -t COMPREPLY < <(compgen -f -- \"${{current//\\\\/}}\")\n"
        "                return ;;\n"
        "            esac\n"
        "            case \"$command\" in\n"
        "{}"
        "            esac ;;\n"
        "    esac\n"
        "    # Of a list the last entry is completed.\n"
        "    [[ $current != *,* ]] || {{ head=${{current%,*}}, current=${{current##*,}}; }}\n"
        "    mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$key$current\")\n"
        "    COMPREPLY=(\"${{COMPREPLY[@]#\"$key\"}}\")\n"
        "    COMPREPLY=(\"${{COMPREPLY[@]/#/$head}}\")\n"
        "    [ -n \"${{COMPREPLY[0]%%*=}}\" ] || compopt -o nospace 2>/dev/null\n"
        "}}\n"
        "complete -o filenames -F _fendra fendra\n",
        names, values, options);
}
