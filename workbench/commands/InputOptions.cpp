#include "workbench/commands/InputOptions.h"

#include "workbench/system/fileNames.h"

#include <CLI/CLI.hpp>

void InputOptions::addTo(CLI::App& command) {
    command
        .add_flag("--no-axis", noAxis,
                  "take the first column of a text file as a signal, whatever its name")
        ->group("Signals");
    command
        .add_flag("--allow-nonfinite", allowNonfinite,
                  "accept NaN and infinity in the input and in the result")
        ->group("Signals");
    addModuleTo(command);
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
    return std::string(noAxis ? " --no-axis" : "") + (allowNonfinite ? " --allow-nonfinite" : "") +
           (module.empty() ? "" : " --module " + quoted(module));
}
