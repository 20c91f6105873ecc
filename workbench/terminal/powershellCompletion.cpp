#include "workbench/terminal/completionScript.h"

#include <fmt/format.h>

// @('one', 'two')
static std::string powershellList(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) {
        text += fmt::format("{}'{}'", text.empty() ? "" : ", ", word);
    }
    return fmt::format("@({})", text);
}

static std::string powershellValues(const CompletedCommand& command) {
    using Kind = CompletedValue::Kind;
    std::string lines;
    const auto add = [&](const std::string& after, const CompletedValue& value) {
        if (value.kind == Kind::words) {
            lines += fmt::format("        '{} {}' = {}\n", command.name, after,
                                 powershellList(value.words));
        }
    };
    for (const CompletedOption& option : command.options) {
        for (const std::string& name : option.names) {
            add(name, option.value);
        }
    }
    if (!command.arguments.empty() && command.arguments.front().kind == Kind::words) {
        add(command.name, command.arguments.front());
    }
    return lines;
}

// Its places are for the words that a command can be followed by, and for the values of options. A
// completer that gives nothing leaves the word to the shell, which offers files.
static constexpr const char* powershellScript = R"script(# PowerShell completion for fendra
Register-ArgumentCompleter -Native -CommandName fendra, fendra.exe -ScriptBlock {{
    param($word, $line, $cursor)
    $words = @{{
{}    }}
    $values = @{{
{}    }}
    $before = @($line.CommandElements | Where-Object {{ $_.Extent.EndOffset -lt $cursor }} |
        ForEach-Object {{ $_.Extent.Text }})
    $command = ''
    $before | Select-Object -Skip 1 -First 2 | ForEach-Object {{
        $longer = "$command $_".Trim()
        if ($words.ContainsKey($longer)) {{ $command = $longer }}
    }}
    $key = "$command $($before[-1])"
    $offered = @()
    if ($values.ContainsKey($key)) {{
        $offered = $values[$key]
    }} elseif ($word.StartsWith('-') -or $before.Count -eq 1 -or $key -eq 'batch batch') {{
        $offered = $words[$command]
    }}
    $offered | Where-Object {{ $_.StartsWith($word) }} | ForEach-Object {{
        [System.Management.Automation.CompletionResult]::new($_, $_, 'ParameterValue', $_)
    }}
}}
)script";

static std::string powershellWords(const CompletedCommand& command) {
    std::vector<std::string> all = command.commands;
    const std::vector<std::string> names = command.optionNames();
    all.insert(all.end(), names.begin(), names.end());
    return fmt::format("        '{}' = {}\n", command.name, powershellList(all));
}

std::string powershellCompletion(const CompletionTable& table) {
    std::string words = powershellWords(table.program), after;
    for (const CompletedCommand& command : table.commands) {
        words += powershellWords(command);
        after += powershellValues(command);
    }
    return fmt::format(powershellScript, words, after);
}
