#include "workbench/commands/signalFacts.h"

#include "workbench/jobs/SignalRange.h"
#include "workbench/messages/Printable.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <cmath>
#include <string>

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

static void addLabels(std::vector<Fact>& facts, const SoundLabels& labels) {
    Json tags = Json::object();
    std::vector<std::string> lines;
    for (const SoundLabels::Tag& tag : labels.tags) {
        tags[tag.name] = tag.text;
        lines.push_back(fmt::format("{}: {}", tag.name, printable(tag.text)));
    }
    if (!tags.empty()) {
        facts.push_back({"tags", "tags", tags,
                         fmt::format("{}", fmt::join(lines, "\n                        "))});
    }
    if (!labels.speakers.empty()) {
        facts.push_back({"speakers", "loudspeakers", labels.speakers});
    }
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

// The least and the largest value of each channel, and where that is.
static void addRanges(std::vector<Fact>& facts, SignalReader& reader) {
    const SignalInfo& info = reader.info();
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
}

std::vector<Fact> signalFacts(SignalReader& reader) {
    const SignalInfo& info = reader.info();
    std::vector<Fact> facts = {{"format", "format", info.format},
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
    if (!info.names.empty()) {
        facts.push_back({"names", "names", info.names});
    }
    addLabels(facts, info.labels);
    addRanges(facts, reader);
    if (info.text) {
        addTextSigns(facts, *info.text);
    }
    if (!info.remarks.empty()) {
        facts.push_back({"remarks", "remark", info.remarks,
                         fmt::format("{}", fmt::join(info.remarks, "\n                        "))});
    }
    return facts;
}
