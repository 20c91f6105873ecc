#include "workbench/jobs/RunRecord.h"

#include "workbench/messages/Printable.h"
#include "workbench/methods/Setting.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

std::string describe(int channels, std::int64_t samples, double rate) {
    std::string text = fmt::format("{} sample{}", samples, samples == 1 ? "" : "s");
    if (channels != 1) {
        text += fmt::format(" in {} channels", channels);
    }
    return rate > 0.0 ? text + fmt::format(", {} Hz", rate) : text;
}

// "convolve, frequency, per block, Fendra V1.91"
std::string RunRecord::work() const {
    return fmt::format("{}, {}, per {}, {} {}", command, method, per, module, moduleVersion);
}

std::vector<std::string> RunRecord::openingNotes() const {
    std::vector<std::string> notes = {commandLine, work()};
    if (!graph.empty()) {
        notes.push_back(fmt::format("{}: {}", graph, settingsLine(settings)));
    }
    for (const SignalInfo& input : inputs) {
        notes.push_back(fmt::format("{}: {}", input.source.shown,
                                    describe(input.channels, input.samples, input.rate)));
    }
    return notes;
}

std::vector<std::string> RunRecord::closingNotes() const {
    return {"SHA-256 of the result, as 64-bit little-endian floats: " + digest};
}

std::string RunRecord::summary() const {
    std::string text = fmt::format("{}: {}, from {:.6g} to {:.6g}\n{}\n", printable(output),
                                   describe(channels, samples, rate), minimum, maximum, work());
    for (const ReportedNumbers& entry : numbers) {
        const std::string channel =
            channels == 1 ? "" : fmt::format(", channel {}", entry.channel + 1);
        text += fmt::format("block {}{}: {} {:.6g}, {} {:.6g}\n", entry.round + 1, channel,
                            numberNames[0], entry.values[0], numberNames[1], entry.values[1]);
    }
    if (error) {
        text += fmt::format("relative error against {}: {:.2g}\n", printable(truth), *error);
    }
    return text;
}

std::string RunRecord::json() const {
    using Json = nlohmann::ordered_json;
    const auto known = [](double value) { return value > 0.0 ? Json(value) : Json(nullptr); };
    Json files = Json::array();
    for (const SignalInfo& input : inputs) {
        files.push_back({{"file", input.source.recorded()},
                         {"format", input.format},
                         {"samples", input.samples},
                         {"channels", input.channels},
                         {"rate", known(input.rate)}});
    }
    Json result = {{"file", output},      {"samples", samples}, {"channels", channels},
                   {"rate", known(rate)}, {"blocks", rounds},   {"minimum", minimum},
                   {"maximum", maximum},  {"sha256", digest}};
    if (error) {
        result["truth"] = truth;
        result["relativeError"] = *error;
    }
    for (const ReportedNumbers& entry : numbers) {
        result["numbers"].push_back({{"block", entry.round + 1},
                                     {"channel", entry.channel + 1},
                                     {numberNames[0], entry.values[0]},
                                     {numberNames[1], entry.values[1]}});
    }
    Json record = {{"command", commandLine},
                   {"module", {{"name", module}, {"version", moduleVersion}, {"file", moduleFile}}},
                   {"settings",
                    {{"direction", command},
                     {"method", method},
                     {"per", per},
                     {"block", block > 0 ? Json(block) : Json(nullptr)},
                     {"pad", pad}}},
                   {"inputs", files},
                   {"result", result}};
    if (!graph.empty()) {
        record["settings"]["graph"] = {{"file", graph}, {"holds", settingsJson(settings)}};
    }
    return record.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}
