#include "workbench/commands/Command.h"
#include "workbench/files/disk/PartialFile.h"
#include "workbench/messages/Failure.h"
#include "workbench/system/Console.h"
#include "workbench/system/endings.h"
#include "workbench/terminal/help.h"
#include "workbench/terminal/suggestion.h"
#include "workbench/terminal/texts.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <exception>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

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

// One line on what is wrong with the command line.
static std::string complaint(const CLI::App& program, const CLI::ParseError& error) {
    const std::vector<CLI::App*> given = program.get_subcommands();
    const std::vector<std::string> surplus = program.remaining(true);
    if (given.empty() && surplus.empty()) {
        return fmt::format("name a command: {}; see fendra --help",
                           fmt::join(commandNames(program), ", "));
    }
    const std::string word = surplus.empty() ? "" : surplus.front();
    if (given.empty()) {
        return fmt::format("\"{}\" is no command{}; see fendra --help", word,
                           suggestion(word, commandNames(program)));
    }
    const CLI::App& command = *given.back();
    const std::string help = fmt::format("; see fendra {} --help", command.get_name());
    if (surplus.empty()) {
        return error.what() + help;
    }
    if (word.front() == '-') {
        return fmt::format("\"{}\" is no option of {}{}{}", word, command.get_name(),
                           suggestion(word, allOptionNames(command)), help);
    }
    return fmt::format("\"{}\" is one word too many{}", word, help);
}

static constexpr const char* memoryExhausted =
    "memory exhausted; cut the signals with --per block --block N";

static int report(const std::string& message, int status) {
    fmt::print(stderr, "fendra: {}\n", message);
    return status;
}

static void noteLeftover(const std::string& name) {
    fmt::print(stderr, "note: {} is left from a run that was cut off; remove it\n", name);
}

int main(int argc, char** argv) {
    catchEndings(PartialFile::removeAll);
    PartialFile::onLeftover(noteLeftover);
    const Console console;
    try {
        CLI::App program(fmt::format("{}\n{}", programSummary, lagText), "fendra");
        program.set_help_flag("-h,--help", "show this help");
        program.formatter(std::make_shared<Help>());
        program.footer(programExamples);
        program.require_subcommand(1);
        addConvolve(program);
        addDeconvolve(program);
        addCompare(program);
        addSettings(program);
        addReport(program);
        addInfo(program);
        addSelftest(program);
        addCompletion(program);
        addManual(program);
        try {
            std::vector<std::string> words = Console::words(argc, argv);
            std::reverse(words.begin(), words.end());  // as the parser takes them
            program.parse(std::move(words));
        } catch (const CLI::CallForHelp& help) {
            return program.exit(help);
        } catch (const CLI::ParseError& error) {
            return report(complaint(program, error), 2);
        }
        return 0;
    } catch (const std::bad_alloc&) {
        return report(memoryExhausted, 1);
    } catch (const std::length_error&) {  // a size beyond what vectors hold
        return report(memoryExhausted, 1);
    } catch (const std::exception& error) {
        return report(error.what(), 1);
    }
}
