#include "workbench/jobs/RunRecord.h"

#include "workbench/jobs/recordJson.h"
#include "workbench/methods/Method.h"
#include "workbench/methods/Setting.h"
#include "workbench/methods/settingsJson.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>

using Json = nlohmann::ordered_json;

std::string describe(int channels, std::int64_t samples, double rate) {
    std::string text = samples == 0 ? "samples as they come"
                                    : fmt::format("{} sample{}", samples, samples == 1 ? "" : "s");
    if (channels != 1) {
        text += fmt::format(" in {} channels", channels);
    }
    return rate > 0.0 ? text + fmt::format(", {} Hz", rate) : text;
}

static constexpr const char* overlapAddText = "overlap-add of the workbench";

// "convolve, frequency, per block, Fendra V1.91"; "linear" where nothing wraps round
std::string RunRecord::work() const {
    if (overlapAdd) {
        return fmt::format("convolve, frequency, linear, {}", overlapAddText);
    }
    const bool convolves = settings.direction == FendraSettings::convolution;
    return fmt::format("{}, {}, {}, {} {}", convolves ? "convolve" : "deconvolve",
                       Method::selectedBy(settings)->word,
                       convolves && pad ? "linear" : "per " + Setting::named("per").word(settings),
                       module, moduleVersion);
}

// What was chosen and why, what that does, and by how much the result was moved.
std::vector<std::string> RunRecord::treatmentLines() const {
    std::vector<std::string> lines;
    if (choice) {
        lines = choice->reasons;
        lines.push_back(fmt::format(
            "{:.2f} % of the signal's energy explained, {:.1f} of {} degrees of freedom kept, "
            "noise {} {:.3g}",
            100.0 * choice->explained, choice->kept, choice->degrees,
            choice->noiseIsBound ? "at most" : "about", choice->noise));
    }
    if (moved) {
        lines.push_back(moved->text());
    }
    return lines;
}

static std::string gainText(const GainRecord& gain) {
    if (!gain.peak) {
        return fmt::format("gain of {} dB", gain.decibels);
    }
    return *gain.peak == 0.0 ? "not normalized: every sample is zero"
                             : fmt::format("normalized: the peak of {:.4g} became 1, by {:.2f} dB",
                                           *gain.peak, gain.decibels);
}

// What the result is worth, known once it is there.
std::vector<std::string> RunRecord::judgementLines() const {
    std::vector<std::string> lines;
    const auto seconds = [this](double count, const char* before) {
        return rate > 0.0 ? fmt::format("{}{:.4g} s", before, count / rate) : std::string();
    };
    if (uncertainty) {
        lines.push_back(fmt::format(
            "noise leaves a band of {:.3g} on either side (95 %), at a resolution of {:.3g} "
            "sample{}{}",
            uncertainty->halfWidth, uncertainty->resolution,
            uncertainty->resolution == 1.0 ? "" : "s", seconds(uncertainty->resolution, ", ")));
    }
    if (gain) {
        lines.push_back(gainText(*gain));
    }
    for (const ResponseRecord& response : responses) {
        lines.push_back(fmt::format(
            "{}peak {:.4g} at sample {}{}; {:.1f} dB above the noise, {:.3g} where it is quietest",
            channels == 1 ? "" : fmt::format("channel {}: ", response.channel + 1), response.peak,
            response.peakSample, seconds(static_cast<double>(response.peakSample), ", "),
            response.decibels(), response.noise));
    }
    return lines;
}

std::string StopRecord::text() const {
    return fmt::format("stopped after {} of at most {} steps, counted as by --max-iterations", loop,
                       most);
}

std::vector<std::string> RunRecord::openingNotes() const {
    std::vector<std::string> notes = {words, work()};
    if (!graph.empty()) {
        notes.push_back(fmt::format("{}: {}", graph, settingsLine(settings)));
    }
    for (const std::string& line : treatmentLines()) {
        notes.push_back(line);
    }
    if (choice && !choice->rerun.empty()) {
        notes.push_back("without a search: " + choice->rerun);
    }
    for (const SignalInfo& input : inputs) {
        notes.push_back(fmt::format("{}: {}", input.source.shown,
                                    describe(input.channels, input.samples, input.rate)));
    }
    return notes;
}

std::vector<std::string> RunRecord::closingNotes() const {
    std::vector<std::string> notes;
    if (stop) {
        notes.push_back(stop->text());
        if (!stop->rerun.empty()) {
            notes.push_back("without a stop: " + stop->rerun);
        }
    }
    for (const std::string& line : judgementLines()) {
        notes.push_back(line);
    }
    std::transform(remarks.begin(), remarks.end(), std::back_inserter(notes),
                   [](const std::string& remark) { return "remark: " + remark; });
    for (const SignalInfo& input : inputs) {
        const std::string note = fmt::format("SHA-256 of {}: {}", input.source.shown, input.sha256);
        if (!input.sha256.empty() && std::count(notes.begin(), notes.end(), note) == 0) {
            notes.push_back(note);  // it may be the same file twice
        }
    }
    notes.push_back("SHA-256 of the result, as 64-bit little-endian floats: " + digest);
    return notes;
}

std::string RunRecord::summary() const {
    const bool hasRange = minimum <= maximum;  // not where all samples are NaN
    std::string text =
        fmt::format("{}: {}, {}\n{}{}\n", output.shown, describe(channels, samples, rate),
                    hasRange ? fmt::format("from {:.6g} to {:.6g}", minimum, maximum) : "all NaN",
                    work(), stopped ? ", stopped: the estimate so far" : "");
    if (stop) {
        text += stop->text() + "\n";
    }
    for (const std::string& line : treatmentLines()) {
        text += line + "\n";
    }
    for (const std::string& line : judgementLines()) {
        text += line + "\n";
    }
    if (stop && !stop->rerun.empty()) {
        text += "without a stop: " + stop->rerun + "\n";
    } else if (choice && !choice->rerun.empty()) {
        text += "without a search: " + choice->rerun + "\n";
    }
    for (const ReportedNumbers& entry : numbers) {
        text += fmt::format("block {}{}:", entry.round + 1,
                            channels == 1 ? "" : fmt::format(", channel {}", entry.channel + 1));
        for (std::size_t i = 0; i < entry.values.size(); ++i) {
            text += fmt::format("{} {} {:.6g}", i == 0 ? "" : ",", numberNames[i], entry.values[i]);
        }
        text += "\n";
    }
    if (error) {
        const bool whole = error->known == samples;
        text += fmt::format(
            "relative error against {}: {:.2g}{}\n", error->truth.shown, error->relativeError,
            whole ? "" : fmt::format(" (over the first {} samples)", error->samples));
    }
    for (const std::string& remark : remarks) {
        text += fmt::format("remark: {}\n", remark);
    }
    return text;
}

static Json known(double value) {
    return value > 0.0 ? Json(value) : Json(nullptr);
}

static Json describe(const SignalInfo& input) {
    Json file = {{"file", input.source.recorded()},
                 {"format", input.format},
                 {"samples", input.samples},
                 {"channels", input.channels},
                 {"rate", known(input.rate)}};
    if (!input.sha256.empty()) {
        file["sha256"] = input.sha256;
    }
    return file;
}

// The keys are the method's; the names in the user's language stand beside them.
static void addNumbers(const RunRecord& record, Json& result) {
    const Method& method = *Method::selectedBy(record.settings);
    for (const ReportedNumbers& entry : record.numbers) {
        Json numbers = {{"block", entry.round + 1}, {"channel", entry.channel + 1}};
        for (std::size_t i = 0; i < entry.values.size(); ++i) {
            numbers[method.numbers.at(i)] = entry.values[i];
            result["names"][method.numbers.at(i)] = record.numberNames[i];
        }
        result["numbers"].push_back(numbers);
    }
}

// What is absent has no field, except rates: that none is known is a fact of its own.
static Json resultOf(const RunRecord& record) {
    Json result = {{"file", record.output.recorded()}, {"samples", record.samples},
                   {"channels", record.channels},      {"rate", known(record.rate)},
                   {"blocks", record.rounds},          {"minimum", record.minimum},
                   {"maximum", record.maximum},        {"sha256", record.digest}};
    if (record.error) {
        result["truth"] = record.error->truth.recorded();
        result["relativeError"] = record.error->relativeError;
        result["comparedSamples"] = record.error->samples;
    }
    if (record.stopped) {
        result["stopped"] = true;
        if (record.stop) {
            result["stoppedAfter"] = record.stop->loop;
        }
    }
    addNumbers(record, result);
    if (!record.remarks.empty()) {
        result["remarks"] = record.remarks;
    }
    return result;
}

std::string RunRecord::json() const {
    Json files = Json::array();
    for (const SignalInfo& input : inputs) {
        files.push_back(describe(input));
    }
    Json record = {{"command", words},
                   {"module", {{"name", module}, {"version", moduleVersion}, {"file", moduleFile}}},
                   {"settings", settingsJson(settings)},
                   {"block", block > 0 ? Json(block) : Json(nullptr)},
                   {"pad", pad},
                   {"inputs", files},
                   {"result", resultOf(*this)},
                   {"arithmetic", overlapAdd ? overlapAddText : "module"}};
    if (!graph.empty()) {
        record["graph"] = graph;
    }
    if (choice) {
        record["choice"] = choiceJson(*choice);
    }
    if (moved) {
        record["moved"] = movedJson(*moved);
    }
    if (uncertainty) {
        record["uncertainty"] = {{"noise", uncertainty->noise},
                                 {"resolution", uncertainty->resolution}};
    }
    if (gain) {
        record["gain"] = {{"decibels", gain->decibels}, {"normalized", gain->peak.has_value()}};
    }
    for (const ResponseRecord& response : responses) {
        record["responses"].push_back({{"channel", response.channel + 1},
                                       {"peak", response.peak},
                                       {"peakSample", response.peakSample},
                                       {"noise", response.noise},
                                       {"decibels", response.decibels()}});
    }
    if (!remarks.empty()) {
        record["warnings"] = remarks;
    }
    if (stop && !stop->rerun.empty()) {
        record["rerun"] = stop->rerun;
    } else if (choice && !choice->rerun.empty()) {
        record["rerun"] = choice->rerun;
    }
    return record.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}
