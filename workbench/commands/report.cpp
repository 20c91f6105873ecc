#include "host/B_BasisModule.h"
#include "platform/Windows1252.h"
#include "workbench/commands/Command.h"
#include "workbench/commands/InputOptions.h"
#include "workbench/methods/Setting.h"
#include "workbench/module/FendraModule.h"
#include "workbench/module/StoredGraph.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <memory>
#include <sstream>
#include <string>

// The module's own report, as a terminal takes it: UTF-8, lines ended by line feeds.
static std::string reportOf(B_BasisModule& module) {
    std::stringstream bytes;
    CArchive archive(bytes, CArchive::store);
    module.WriteReport(archive);
    std::string text = toUtf8(CString(bytes.str().c_str()));
    std::erase(text, '\r');
    return text;
}

void addReport(CLI::App& program) {
    struct Report {
        std::string graph;
        bool json = false;
        InputOptions input;
    };
    CLI::App& command = *program.add_subcommand(
        "report",
        "Print the settings that a graph holds.\n"
        "As the module reports them, in German; with --json by the keys of fendra settings, and a "
        "number where a value has no word there.");
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
        loadGraph(*module, report->graph);
        fmt::print("{}", report->json ? settingsJson(settingsOf(*module)).dump(2) + "\n"
                                      : reportOf(*module));
    });
}
