#include "host/B_BasisModule.h"
#include "workbench/commands/Command.h"
#include "workbench/desktop/DialogTyper.h"
#include "workbench/desktop/SettingsEditor.h"
#include "workbench/desktop/WindowLibrary.h"
#include "workbench/files/disk/OutputFile.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/module/FendraModule.h"
#include "workbench/module/StoredGraph.h"
#include "workbench/system/fileNames.h"
#include "workbench/system/offer.h"
#include "workbench/terminal/InputOptions.h"
#include "workbench/terminal/help.h"
#include "workbench/terminal/settingWords.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

struct SettingsCommand {
    std::string graph, picture;
    std::vector<std::string> values;
    bool replace = false;
    InputOptions input;

    void run() const;

private:
    void edit(Desktop& desktop) const;
    void editInWindow() const;
    [[nodiscard]] std::vector<Assignment> assignments() const;
};

}  // namespace

// Loads the graph, or takes the defaults, shows the module's dialog, and stores what OK leaves.
void SettingsCommand::edit(Desktop& desktop) const {
    const ModuleLibrary library = input.library();
    const ModuleObject module = library.makeModule();
    std::error_code ignored;
    const bool exists = std::filesystem::exists(pathOf(graph), ignored);
    if (exists) {
        loadGraph(*module, graph);
    }
    const DialogEnd end = editSettings(*module, desktop);
    if (end == DialogEnd::notShown) {
        throw Failure(
            fmt::format("{} has no dialog for its settings", printable(nameOf(library.file))));
    }
    if (end == DialogEnd::accepted) {
        storeGraph(*module, graph, exists);
        fmt::print("{}: {}\n", printable(graph), settingsLine(settingsOf(*module)));
    }
}

std::vector<Assignment> SettingsCommand::assignments() const {
    std::vector<Assignment> given;
    for (const std::string& word : values) {
        const Assignment next(word);
        if (std::any_of(given.begin(), given.end(),
                        [&](const Assignment& other) { return other.setting == next.setting; })) {
            throw CLI::ValidationError("--set", next.setting->key + " is given twice");
        }
        given.push_back(next);
    }
    return given;
}

// There is always a way without a window, and the message names it.
void SettingsCommand::editInWindow() const {
    std::unique_ptr<WindowLibrary> library;
    std::unique_ptr<Desktop> desktop;  // ends before the library
    try {
        WindowLibrary::requireDisplay();
        library = std::make_unique<WindowLibrary>();
        desktop = library->windowDesktop(printable(nameOf(pathOf(graph).filename())));
    } catch (const Failure& failure) {
        throw Failure(
            fmt::format("{}; set values with fendra settings {} --set KEY=VALUE, see "
                        "fendra settings --help",
                        failure.what(), quoted(graph)));
    }
    edit(*desktop);
}

void SettingsCommand::run() const {
    if (graph == "-") {
        throw CLI::ValidationError("GRAPH", "name a file; standard input cannot be stored in");
    }
    if (!values.empty()) {
        DialogTyper typer(assignments());
        edit(typer);
        return;
    }
    if (!picture.empty()) {
        const OutputFile refusesExisting(SourceName::ofOutput(picture), replace);
        const WindowLibrary windows;
        edit(*windows.pictureDesktop(picture));
        return;
    }
    editInWindow();
}

static void addSettings(CLI::App& program) {
    CLI::App& command = *program.add_subcommand(
        "settings",
        fmt::format(
            "Choose settings and keep them in a stored graph.\n"
            "{} and presses OK: values that it would not offer are rejected. GRAPH is replaced on "
            "OK, as a whole, and otherwise stays as it was. If it does not exist, the dialog "
            "starts from the module's defaults. A graph holds the settings of one module and "
            "nothing else: a file with trailing data is rejected, as is one of another version of "
            "the module. The settings in the record of a run, given to --set, are taken whole.",
            Offer::here.windows
                ? "Opens the module's own settings dialog on GRAPH, or with --set fills it in"
                : "Fills in the module's own settings dialog for GRAPH, by --set,"));
    command.footer(fmt::format(
        "{}"
        "  fendra settings lines.graph --set direction=deconvolution method=van-cittert\n"
        "  fendra settings lines.graph --set convergence=0.5 --set max-iterations=30\n"
        "  fendra deconvolve lines.csv peak.csv --graph lines.graph\n",
        Offer::here.windows
            ? "  fendra settings lines.graph                      in the module's dialog\n"
              "  fendra settings lines.graph --picture dialog.png\n"
            : ""));
    const auto settings = std::make_shared<SettingsCommand>();
    command.add_option("GRAPH", settings->graph, "the file of a stored graph")
        ->required()
        ->type_name("FILE");
    CLI::Option* const set =
        command
            .add_option(
                "--set", settings->values,
                "give values instead of showing the dialog, in any order: " + settingVocabulary())
            ->check(CLI::Validator([](std::string& word) { return problemWithAssignment(word); },
                                   fmt::format("{{{}}}", fmt::join(settingCompletions(), ","))))
            ->type_name("KEY=VALUE");
    command
        .add_option("--picture", settings->picture,
                    "paint the dialog into a PNG file instead of showing it; nothing is stored")
        ->type_name("FILE")
        ->excludes(set)
        ->group(groupWhere(Offer::here.windows, "Options"));
    command.add_flag("--force", settings->replace, "replace the picture if it exists")
        ->group(groupWhere(Offer::here.windows, "Options"));
    settings->input.addModuleTo(command);
    command.callback([settings] { settings->run(); });
}

extern const Command settingsCommand = {addSettings};
