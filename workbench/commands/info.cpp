#include "host/B_BasisModule.h"
#include "platform/ResourceChain.h"
#include "platform/Windows1252.h"
#include "workbench/commands/Command.h"
#include "workbench/commands/InputOptions.h"
#include "workbench/messages/Printable.h"
#include "workbench/module/FendraModule.h"
#include "workbench/system/fileNames.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <limits>
#include <memory>
#include <string>
#include <vector>

using Json = nlohmann::ordered_json;

// A fact as it stands on a line of its own: text without quotes, a list with commas.
static std::string plain(const Json& fact) {
    if (fact.is_null()) {
        return "not known";
    }
    const Json list = fact.is_array() ? fact : Json::array({fact});
    std::string line;
    for (const Json& entry : list) {
        line += line.empty() ? "" : ", ";
        line += entry.is_string() ? printable(entry.get<std::string>()) : entry.dump();
    }
    return line;
}

static void print(const Json& facts, bool asJson) {
    if (asJson) {
        fmt::print("{}\n", facts.dump(2, ' ', false, Json::error_handler_t::replace));
        return;
    }
    for (const auto& [name, fact] : facts.items()) {
        fmt::print("{:<24}{}\n", name, plain(fact));
    }
}

// "Signal 1 (DOUBLE[] TIME_DOMAIN)" for each port of a side
static Json ports(B_BasisModule& module, PORTTYPE side) {
    const bool input = side == inputPort;
    Json list = Json::array();
    for (int port = 0; port < (input ? module.GetNoInput() : module.GetNoOutput()); ++port) {
        const CString name = input ? module.GetInputName(port) : module.GetOutputName(port);
        list.push_back(
            fmt::format("{} ({})", toUtf8(name), toUtf8(module.GetPortType(side, port))));
    }
    return list;
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

static Json moduleFacts(const ModuleLibrary& library) {
    const ModuleObject module = library.makeModule();
    Json facts = {{"module", library.longLabel()},
                  {"short name", library.shortLabel()},
                  {"version", toUtf8(module->moduleVersion)},
                  {"file", nameOf(library.file)},
                  {"exports", ModuleLibrary::exportNames}};
    Json languages = Json::array();
    for (const unsigned language : ResourceChain::stringLanguages(library.labelId())) {
        languages.push_back(languageName(language));
    }
    facts["languages"] = languages;
    facts["bitmap"] = library.bitmapId();
    facts["icon"] = module->GetIconID();
    FendraSettings settings;
    for (const auto& [name, direction] :
         {std::pair("convolution", FendraSettings::convolution),
          std::pair("deconvolution", FendraSettings::deconvolution)}) {
        settings.direction = direction;
        applySettings(settings, *module);
        facts[fmt::format("{} inputs", name)] = ports(*module, inputPort);
        facts[fmt::format("{} outputs", name)] = ports(*module, outputPort);
    }
    return facts;
}

struct Range {
    double smallest = std::numeric_limits<double>::infinity();
    double largest = -std::numeric_limits<double>::infinity();
};

static std::vector<Range> ranges(SignalReader& reader) {
    std::vector<Range> all(static_cast<std::size_t>(reader.info().channels));
    const std::int64_t pieceLength = std::max<std::int64_t>(1, 65536 / reader.info().channels);
    std::vector<double> piece(static_cast<std::size_t>(pieceLength) * all.size());
    while (const std::int64_t got = reader.read(piece.data(), pieceLength)) {
        for (std::size_t i = 0; i < static_cast<std::size_t>(got) * all.size(); ++i) {
            Range& range = all[i % all.size()];
            range.smallest = std::min(range.smallest, piece[i]);
            range.largest = std::max(range.largest, piece[i]);
        }
    }
    return all;
}

static Json fileFacts(SignalReader& reader) {
    const SignalInfo& info = reader.info();
    Json facts = {{"file", info.source.recorded()},
                  {"format", info.format},
                  {"samples", info.samples},
                  {"channels", info.channels},
                  {"rate", info.rate > 0.0 ? Json(info.rate) : Json(nullptr)}};
    if (info.rate > 0.0) {
        facts["seconds"] = static_cast<double>(info.samples) / info.rate;
    }
    if (info.axis) {
        facts["axis"] = {
            {"name", info.axis->name}, {"start", info.axis->start}, {"step", info.axis->step}};
    }
    for (const Range& range : ranges(reader)) {
        facts["smallest"].push_back(range.smallest);
        facts["largest"].push_back(range.largest);
    }
    return facts;
}

void addInfo(CLI::App& program) {
    struct Info {
        std::string file;
        bool json = false;
        InputOptions input;
    };
    CLI::App& command =
        *program.add_subcommand("info", "Tell about the module, or what a file holds.");
    command.footer(
        "  fendra info                  label, version, ports, exports and languages of the "
        "module\n"
        "  fendra info speech.wav       samples, rate, channels and range of a file\n");
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
