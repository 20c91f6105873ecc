#include "workbench/jobs/methodSentences.h"

#include "workbench/methods/Method.h"

#include <fmt/format.h>

#include <algorithm>

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

std::vector<MethodSentence> sentencesOn(const std::vector<MethodOutcome>& outcomes) {
    std::vector<MethodSentence> all;
    for (const MethodOutcome& outcome : outcomes) {
        for (const std::string& text : sentencesOn(outcome)) {
            auto same = std::find_if(all.begin(), all.end(), [&](const MethodSentence& sentence) {
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
