#include "workbench/terminal/comparisonText.h"

#include "workbench/jobs/recordJson.h"
#include "workbench/methods/Method.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

#include <algorithm>
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

static bool isOnFile(const std::string& remark, const RunRecord& record) {
    return std::any_of(record.inputs.begin(), record.inputs.end(), [&](const SignalInfo& input) {
        return std::count(input.remarks.begin(), input.remarks.end(), remark) != 0;
    });
}

static std::vector<std::string> sentencesOn(const MethodOutcome& outcome) {
    std::vector<std::string> sentences;
    const RunRecord& record = outcome.record;
    if (record.choice) {
        sentences = record.choice->reasons;
    }
    sentences.insert(sentences.end(), record.remarks.begin(), record.remarks.end());
    if (record.error && record.error->known != record.samples) {
        sentences.push_back(
            fmt::format("the error is over the first {} samples", record.error->samples));
    }
    return sentences;
}

namespace {

// A sentence, and the methods of which it holds; of none where it is on a file.
struct Sentence {
    std::string text;
    std::vector<std::string> methods;
};

}  // namespace

// What holds for several methods is said once.
static std::vector<Sentence> sentencesOn(const std::vector<MethodOutcome>& outcomes) {
    std::vector<Sentence> all;
    for (const MethodOutcome& outcome : outcomes) {
        for (const std::string& text : sentencesOn(outcome)) {
            auto same = std::find_if(all.begin(), all.end(), [&](const Sentence& sentence) {
                return sentence.text == text;
            });
            if (same == all.end()) {
                same = all.insert(all.end(), {text, {}});
            }
            if (!isOnFile(text, outcome.record)) {
                same->methods.emplace_back(outcome.method->word);
            }
        }
    }
    return all;
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
