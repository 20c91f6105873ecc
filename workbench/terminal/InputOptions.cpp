#include "workbench/terminal/InputOptions.h"

#include "workbench/system/fileNames.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

void InputOptions::addTo(CLI::App& command) {
    addReadingTo(command);
    addModuleTo(command);
}

void InputOptions::addReadingTo(CLI::App& command) {
    CLI::Option* const named =
        command
            .add_option("--axis", axis,
                        "the column of text files that is the axis: its name, or its number from "
                        "1; none: no column is. Default: the first, if it is strictly monotonic "
                        "and evenly spaced and no other is")
            ->type_name("COLUMN")
            ->group("Signals");
    command
        .add_option("--columns", columns,
                    "comma-separated list of the columns of text files that are signals, by name "
                    "or number; default: all except the axis")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->type_name("LIST")
        ->group("Signals");
    command.add_flag("--no-axis", noAxis, "the same as --axis none")
        ->excludes(named)
        ->group("Signals");
    text.addTo(command);
    addNonfiniteTo(command);
    addLossyTo(command);
}

void InputOptions::addLossyTo(CLI::App& command) {
    command
        .add_flag(
            "--lossy", lossy,
            "accept integers beyond 2^53 in the input, which are rounded, and an output without "
            "a place for the axis")
        ->group("Signals");
}

void InputOptions::addNonfiniteTo(CLI::App& command) {
    command
        .add_flag("--allow-nonfinite", allowNonfinite,
                  "accept NaN and infinity in the input and in the result")
        ->group("Signals");
}

void InputOptions::addModuleTo(CLI::App& command) {
    command
        .add_option("--module", module,
                    "the module library to run; default: the one beside the program")
        ->type_name("FILE");
}

ModuleLibrary InputOptions::library() const {
    return ModuleLibrary(module.empty() ? ModuleLibrary::standardFile() : pathOf(module));
}

std::string InputOptions::words() const {
    const std::string axisWord = reading().axis;
    return (axisWord.empty() ? "" : " --axis " + quoted(axisWord)) +
           (columns.empty() ? ""
                            : " --columns " + quoted(fmt::format("{}", fmt::join(columns, ",")))) +
           text.words() + (allowNonfinite ? " --allow-nonfinite" : "") + (lossy ? " --lossy" : "") +
           (module.empty() ? "" : " --module " + quoted(module));
}
