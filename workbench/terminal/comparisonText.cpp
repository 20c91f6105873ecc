#include "workbench/terminal/comparisonText.h"

#include "workbench/jobs/methodSentences.h"
#include "workbench/jobs/recordJson.h"
#include "workbench/methods/Method.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

#include <cstddef>
#include <iterator>

static std::string reportedText(const MethodOutcome& outcome) {
    std::string text;
    for (const ReportedNumbers& entry : outcome.record.numbers) {
        for (std::size_t i = 0; i < entry.values.size(); ++i) {
            text += fmt::format("{}{} {:.6g}", text.empty() ? "" : ", ",
                                outcome.record.numberNames[i], entry.values[i]);
        }
    }
    return text;
}

static std::string rowOf(const MethodOutcome& outcome) {
    if (!outcome.failure.empty()) {
        return fmt::format("{:<16}{}\n", outcome.method->word, outcome.failure);
    }
    const auto& error = outcome.record.error;
    const std::string line = fmt::format(
        "{:<16}{:>10.2g}{:>11.2g}{}   {}", outcome.method->word, outcome.misfit, outcome.roughness,
        error ? fmt::format("{:>10.2g}", error->relativeError) : "", reportedText(outcome));
    return line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
}

std::string comparisonTable(const std::vector<MethodOutcome>& outcomes, bool withTruth) {
    std::string text = fmt::format("{:<16}{:>10}{:>11}{}   {}\n", "method", "misfit", "roughness",
                                   withTruth ? fmt::format("{:>10}", "error") : "", "reported");
    for (const MethodOutcome& outcome : outcomes) {
        text += rowOf(outcome);
    }
    for (const auto& [sentence, methods] : sentencesOn(outcomes)) {
        text += methods.empty() ? sentence + ".\n"
                                : fmt::format("{}: {}.\n", fmt::join(methods, ", "), sentence);
    }
    return text;
}

using Json = nlohmann::ordered_json;

static void addResult(const MethodOutcome& outcome, Json& entry) {
    const RunRecord& record = outcome.record;
    entry["misfit"] = outcome.misfit;
    entry["roughness"] = outcome.roughness;
    if (record.error) {
        entry["relativeError"] = record.error->relativeError;
        entry["comparedSamples"] = record.error->samples;
    }
    for (const ReportedNumbers& reported : record.numbers) {
        for (std::size_t i = 0; i < reported.values.size(); ++i) {
            entry[outcome.method->numbers.at(i)].push_back(reported.values[i]);
        }
    }
    if (record.choice) {
        entry["choice"] = choiceJson(*record.choice);
    }
    if (record.moved) {
        entry["moved"] = movedJson(*record.moved);
    }
    entry["remarks"] = record.remarks;
}

std::string comparisonJson(const std::vector<MethodOutcome>& outcomes) {
    Json all = Json::array();
    for (const MethodOutcome& outcome : outcomes) {
        Json entry = {{"method", outcome.method->word}};
        if (outcome.failure.empty()) {
            addResult(outcome, entry);
        } else {
            entry["failure"] = outcome.failure;
        }
        all.push_back(entry);
    }
    return all.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}
