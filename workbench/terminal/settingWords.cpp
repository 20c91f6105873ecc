#include "workbench/terminal/settingWords.h"

#include "workbench/methods/Setting.h"
#include "workbench/terminal/values.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

// Words of older versions: what stands for them now.
static std::string replacementFor(const std::string& word) {
    if (word.starts_with("error-value=") || word == "stop-at-error=on") {
        return "stop-at-error=NUMBER";
    }
    return "";
}

std::string problemWithAssignment(const std::string& word) {
    std::vector<std::string> keys;
    for (const Setting& setting : Setting::all()) {
        keys.push_back(setting.key);
    }
    const std::string now = replacementFor(word);
    if (!now.empty()) {
        return fmt::format("\"{}\" is not used any more; give {}", word, now);
    }
    const std::size_t equals = word.find('=');
    std::string key = word.substr(0, equals);
    std::string problem = choice(keys)(key);
    if (!problem.empty()) {
        return problem;
    }
    if (equals == std::string::npos) {
        return fmt::format("\"{}\" has no value; give {}=VALUE", word, word);
    }
    const Setting& setting = Setting::named(key);
    std::string value = word.substr(equals + 1);
    const std::string wrong = setting.takesNumber() ? "" : choice(setting.moduleWords())(value);
    return wrong.empty() ? "" : key + ": " + wrong;
}

std::string settingVocabulary() {
    std::string text, needs;
    for (const Setting& setting : Setting::all()) {
        const bool another = setting.needs != needs;
        needs = setting.needs;
        text += another ? fmt::format("; with {}: ", needs) : text.empty() ? "" : ", ";
        std::vector<std::string> values = setting.moduleWords();
        if (setting.takesNumber()) {
            values.emplace_back("NUMBER");
        }
        text += fmt::format("{}={}", setting.key, fmt::join(values, "|"));
    }
    return text;
}

std::vector<std::string> settingCompletions() {
    std::vector<std::string> all;
    for (const Setting& setting : Setting::all()) {
        for (const std::string& word : setting.moduleWords()) {
            all.push_back(setting.key + "=" + word);
        }
        if (setting.takesNumber()) {
            all.push_back(setting.key + "=");
        }
    }
    return all;
}
