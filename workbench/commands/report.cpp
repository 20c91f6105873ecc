#include "workbench/commands/Command.h"
#include "workbench/methods/Setting.h"
#include "workbench/methods/settingsJson.h"
#include "workbench/module/FendraModule.h"
#include "workbench/module/ModuleFacts.h"
#include "workbench/module/StoredGraph.h"
#include "workbench/terminal/InputOptions.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <memory>
#include <string>

// "method                  van-cittert" for each setting that applies.
static std::string tableOf(const FendraSettings& settings) {
    std::string table;
    for (const Setting* setting : Setting::applyingTo(settings)) {
        table += fmt::format("{:<24}{}\n", setting->key, setting->word(settings));
    }
    return table;
}

static void addReport(CLI::App& program) {
    struct Report {
        std::string graph;
        bool json = false;
        InputOptions input;
    };
    CLI::App& command = *program.add_subcommand(
        "report",
        "Print the settings that a graph holds.\n"
        "First by the keys of fendra settings, then as the module itself reports them, in German; "
        "values without a keyword appear as numbers. With --json all settings, those that play no "
        "part included.");
    command.footer(
        "  fendra report lines.graph\n"
        "  fendra report lines.graph --json\n");
    const auto report = std::make_shared<Report>();
    command.add_option("GRAPH", report->graph, storedGraphText)->required()->type_name("FILE");
    command.add_flag("--json", report->json, "print JSON");
    report->input.addModuleTo(command);
    command.callback([report] {
        const ModuleLibrary library = report->input.library();
        const ModuleObject module = library.makeModule();
        requireFendra(*module);
        loadGraph(*module, report->graph);
        const FendraSettings settings = settingsOf(*module);
        if (report->json) {
            fmt::print("{}\n", settingsJson(settings).dump(2));
        } else {
            fmt::print("{}\n{}", tableOf(settings), reportOf(*module));
        }
    });
}

extern const Command reportCommand = {addReport};
