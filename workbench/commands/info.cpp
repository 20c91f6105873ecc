#include "host/B_BasisModule.h"
#include "platform/ResourceChain.h"
#include "workbench/commands/Command.h"
#include "workbench/files/libraries.h"
#include "workbench/jobs/SignalRange.h"
#include "workbench/messages/Printable.h"
#include "workbench/module/ModuleFacts.h"
#include "workbench/system/fileNames.h"
#include "workbench/terminal/InputOptions.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <memory>
#include <string>
#include <vector>

using Json = nlohmann::ordered_json;

namespace {

// One fact, for programs by its key and for people by its name.
struct Fact {
    std::string key, name;
    Json value;
    std::string text = {};  // of the value, for people; empty: as it is
};

}  // namespace

// A value as it stands on a line of its own: text without quotes, a list with commas.
static std::string plain(const Json& value) {
    if (value.is_null()) {
        return "not known";
    }
    const Json list = value.is_array() ? value : Json::array({value});
    std::string line;
    for (const Json& entry : list) {
        line += line.empty() ? "" : ", ";
        line += entry.is_null()     ? "none"
                : entry.is_string() ? printable(entry.get<std::string>())
                                    : entry.dump(-1, ' ', false, Json::error_handler_t::replace);
    }
    return line;
}

static void print(const std::vector<Fact>& facts, bool asJson) {
    Json object = Json::object();
    for (const Fact& fact : facts) {
        if (!asJson) {
            fmt::print("{:<24}{}\n", fact.name, fact.text.empty() ? plain(fact.value) : fact.text);
        }
        object[fact.key] = fact.value;
    }
    if (asJson) {
        fmt::print("{}\n", object.dump(2, ' ', false, Json::error_handler_t::replace));
    }
}

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

static Json finiteOrNull(double value) {
    return std::isfinite(value) ? Json(value) : Json(nullptr);
}

static Json placeJson(const SignalInfo& info, const ChannelRange& range) {
    if (!std::isfinite(range.largest)) {
        return nullptr;
    }
    Json place = {{"index", range.largestAt}};
    if (const std::optional<double> axis = placeOf(info, range.largestAt)) {
        place["axis"] = *axis;
    }
    return place;
}

// What divides the lines of a text, and what its numbers.
static void addTextSigns(std::vector<Fact>& facts, const SignalInfo::TextSigns& signs) {
    const auto word = [](char sign) {
        return sign == '\0'   ? Json(nullptr)
               : sign == '\t' ? Json("tab")
               : sign == ' '  ? Json("space")
                              : Json(std::string(1, sign));
    };
    const auto text = [](char sign) { return sign == '\0' ? "none" : ""; };
    facts.push_back({"separator", "separator", word(signs.separator), text(signs.separator)});
    facts.push_back({"decimal", "decimal sign", word(signs.decimal), text(signs.decimal)});
}

static std::vector<Fact> fileFacts(SignalReader& reader) {
    const SignalInfo& info = reader.info();
    std::vector<Fact> facts = {{"file", "file", info.source.recorded()},
                               {"format", "format", info.format},
                               {"samples", "samples", info.samples},
                               {"channels", "channels", info.channels},
                               {"rate", "rate", info.rate > 0.0 ? Json(info.rate) : Json(nullptr)}};
    if (info.rate > 0.0) {
        facts.push_back({"seconds", "seconds", static_cast<double>(info.samples) / info.rate});
    }
    if (info.axis) {
        facts.push_back(
            {"axis",
             "axis",
             {{"name", info.axis->name}, {"start", info.axis->start}, {"step", info.axis->step}}});
    }
    Json smallest = Json::array(), largest = Json::array(), nonfinite = Json::array();
    Json largestAt = Json::array();
    std::string places;
    bool allFinite = true;
    for (const ChannelRange& range : rangesOf(reader)) {
        smallest.push_back(finiteOrNull(range.smallest));
        largest.push_back(finiteOrNull(range.largest));
        nonfinite.push_back(range.nonfinite);
        largestAt.push_back(placeJson(info, range));
        places += (places.empty() ? "" : "; ") + placeText(info, range);
        allFinite = allFinite && range.nonfinite == 0;
    }
    facts.push_back({"smallest", "smallest", smallest});
    facts.push_back({"largest", "largest", largest});
    facts.push_back({"largestAt", "largest at", largestAt, places});
    if (!allFinite) {
        facts.push_back({"nonfinite", "NaN or infinite", nonfinite});
    }
    if (info.text) {
        addTextSigns(facts, *info.text);
    }
    if (!info.remarks.empty()) {
        facts.push_back({"remarks", "remark", info.remarks,
                         fmt::format("{}", fmt::join(info.remarks, "\n                        "))});
    }
    return facts;
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
        "  fendra info lines.csv        the same, with the axis, and which column is what\n");
    const auto info = std::make_shared<Info>();
    command
        .add_option("FILE", info->file,
                    "audio file or columns of text; - is standard input; none: the module")
        ->type_name("");
    command.add_flag("--json", info->json, "print JSON");
    info->input.addTo(command);
    command.callback([info] {
        if (info->file.empty()) {
            print(moduleFacts(info->input.library()), info->json);
        } else {
            print(fileFacts(*openSignal(SourceName(info->file), info->input.reading())),
                  info->json);
        }
    });
}

extern const Command infoCommand = {addInfo};
