#include "workbench/batch/BatchLine.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>

using Json = nlohmann::ordered_json;

static Json jsonOf(const BatchLine::Result& result) {
    Json json = {{"file", result.file}, {"sha256", result.sha256}};
    if (!result.stored.empty()) {
        json["stored"] = result.stored;
    }
    json["columns"] = result.columns;
    json["bytes"] = result.bytes;
    json["modified"] = result.modified;
    return json;
}

std::string BatchLine::text() const {
    Json files = Json::array();
    for (const Input& input : inputs) {
        files.push_back({{"file", input.file}, {"sha256", input.sha256}});
    }
    Json json = {{"name", name}, {"inputs", files}};
    if (result) {
        json["result"] = jsonOf(*result);
    }
    json["settings"] = Json::parse(settings);
    json["seconds"] = seconds;
    json["warnings"] = warnings;
    if (!rerun.empty()) {
        json["rerun"] = rerun;
    }
    if (!error.empty()) {
        json["error"] = error;
    }
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

static BatchLine::Result resultOf(const Json& json) {
    return {json.at("file"),
            json.at("sha256"),
            json.value("stored", ""),
            json.value("columns", 1),
            json.value("bytes", std::int64_t{0}),
            json.value("modified", std::int64_t{0})};
}

// Printing goes down level by level, and a line that no batch has written may have any number.
static bool isNested(std::string_view text) {
    constexpr std::ptrdiff_t most = 1000;
    return std::count(text.begin(), text.end(), '[') + std::count(text.begin(), text.end(), '{') >
           most;
}

std::optional<BatchLine> BatchLine::of(std::string_view text) {
    if (isNested(text)) {
        return std::nullopt;
    }
    try {
        const Json json = Json::parse(text);
        BatchLine line;
        line.name = json.at("name");
        for (const Json& input : json.value("inputs", Json::array())) {
            line.inputs.push_back({input.at("file"), input.at("sha256")});
        }
        if (json.contains("result")) {
            line.result = resultOf(json["result"]);
        }
        line.settings = json.value("settings", Json::object()).dump();
        line.seconds = json.value("seconds", 0.0);
        line.warnings = json.value("warnings", std::vector<std::string>());
        line.rerun = json.value("rerun", "");
        line.error = json.value("error", "");
        return line;
    } catch (const Json::exception&) {
        return std::nullopt;
    }
}

bool BatchLine::asksTheSame(const BatchLine& other) const {
    const auto same = [](const Input& a, const Input& b) { return a.sha256 == b.sha256; };
    return settings == other.settings &&
           std::equal(inputs.begin(), inputs.end(), other.inputs.begin(), other.inputs.end(), same);
}
