#include "host/B_BasisModule.h"
#include "platform/ResourceChain.h"
#include "workbench/commands/Command.h"
#include "workbench/commands/Fact.h"
#include "workbench/commands/signalFacts.h"
#include "workbench/files/libraries.h"
#include "workbench/files/signalFiles.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/module/ModuleFacts.h"
#include "workbench/system/fileNames.h"
#include "workbench/terminal/InputOptions.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace {

// What is said of something, for people and for programs.
struct Description {
    std::string text;
    Json json;
};

}  // namespace

static std::string languageName(unsigned language) {
    switch (language) {
        case languageGerman:
            return "German";
        case languageEnglish:
            return "English";
        case languageFrench:
            return "French";
        default:
            return fmt::format("language {}", language);
    }
}

static std::vector<Fact> moduleFacts(const ModuleLibrary& library) {
    const ModuleObject module = library.makeModule();
    const std::string label = library.longLabel();  // empty where there are no texts
    Json languages = Json::array();
    for (const unsigned language : ResourceChain::stringLanguages(library.labelId())) {
        languages.push_back(languageName(language));
    }
    std::vector<Fact> facts = {{"module", "module", label.empty() ? moduleName(*module) : label},
                               {"shortName", "short name", library.shortLabel()},
                               {"version", "version of its settings", moduleVersion(*module)},
                               {"file", "file", nameOf(library.file)},
                               {"exports", "exports", ModuleLibrary::exportNames},
                               {"languages", "languages", languages},
                               {"bitmap", "bitmap", library.bitmapId()},
                               {"icon", "icon", module->GetIconID()}};
    facts.push_back({"libraries", "libraries", libraries(),
                     fmt::format("{}", fmt::join(libraries(), "\n                        "))});
    for (const ModulePorts& ports : portsOf(*module)) {
        const bool named = !ports.settings.empty();
        const std::string name = named ? ports.settings + " " : "";
        facts.push_back(
            {ports.settings + (named ? "Inputs" : "inputs"), name + "inputs", ports.inputs});
        facts.push_back(
            {ports.settings + (named ? "Outputs" : "outputs"), name + "outputs", ports.outputs});
    }
    return facts;
}

static Description describe(const std::vector<Fact>& facts) {
    return {linesOf(facts), objectOf(facts)};
}

// A part: the facts of a signal, if it is to be read, or what else it is.
static std::vector<Fact> partFacts(const SourceName& file, const FilePart& part,
                                   const ReadOptions& options, bool isRead) {
    std::vector<Fact> facts = {{"name", "name", part.name}};
    if (!part.refusal.empty()) {
        facts.push_back({"refusal", "no signal", part.refusal});
        return facts;
    }
    facts.push_back({"what", "what", part.what});
    if (!isRead) {
        return facts;
    }
    ReadOptions ofPart = options;
    ofPart.part = part.name;
    try {
        const std::vector<Fact> found = signalFacts(*openSignal(file, ofPart));
        facts.insert(facts.end(), found.begin(), found.end());
    } catch (const Failure& failure) {
        facts.push_back({"refusal", "no signal", failure.what()});
    }
    return facts;
}

// A file of several parts is described part by part; one of very many, by their names.
static Description describe(const std::string& name, const ReadOptions& options) {
    const SourceName file(name);
    const std::vector<FilePart> parts = partsOf(file);
    std::vector<Fact> head = {{"file", "file", file.recorded()}};
    if (parts.size() < 2) {
        const std::vector<Fact> found = signalFacts(*openSignal(file, options));
        head.insert(head.end(), found.begin(), found.end());
        return describe(head);
    }
    Description all = describe(head);
    all.json["parts"] = Json::array();
    constexpr std::ptrdiff_t most = 50;
    const std::ptrdiff_t signals = std::count_if(
        parts.begin(), parts.end(), [](const FilePart& part) { return part.refusal.empty(); });
    for (const FilePart& part : parts) {
        const Description one = describe(partFacts(file, part, options, signals <= most));
        all.text += "\n" + one.text;
        all.json["parts"].push_back(one.json);
    }
    if (signals > most) {
        const Description remark = describe(std::vector<Fact>{
            {"remarks", "remark",
             Json::array({fmt::format("{} signals, of which none was read; name one of them, as in "
                                      "{}:{}",
                                      signals, file.recorded(), parts.back().name)})}});
        all.text += "\n" + remark.text;
        all.json.update(remark.json);
    }
    return all;
}

static void addInfo(CLI::App& program) {
    struct Info {
        std::string file;
        bool json = false;
        InputOptions input;
    };
    CLI::App& command =
        *program.add_subcommand("info", "Describe the module, or the contents of a file.");
    command.footer(
        "  fendra info                  label, version, ports, exports and languages of the "
        "module\n"
        "  fendra info speech.wav       samples, rate, channels, range and largest value of a "
        "file\n"
        "  fendra info lines.csv        the same, with the axis, and which column is what\n"
        "  fendra info results.npz      the same of every signal in the file\n");
    const auto info = std::make_shared<Info>();
    command.add_option("FILE", info->file, "signal file; - is standard input; none: the module")
        ->type_name("");
    command.add_flag("--json", info->json, "print JSON");
    info->input.addTo(command);
    command.callback([info] {
        const Description described = info->file.empty()
                                          ? describe(moduleFacts(info->input.library()))
                                          : describe(info->file, info->input.reading());
        fmt::print("{}", info->json ? documentOf(described.json) + "\n" : described.text);
    });
}

extern const Command infoCommand = {addInfo};
