#include "workbench/terminal/SettingOptions.h"

#include "workbench/methods/Method.h"
#include "workbench/terminal/values.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <utility>

// Settings of a direction: those that apply under one of its methods.
static std::vector<const Setting*> settingsOf(std::int32_t direction) {
    std::vector<const Setting*> some;
    for (const Setting& setting : Setting::all()) {
        for (const Method* method : Method::of(direction)) {
            FendraSettings settings;
            settings.direction = direction;
            settings.method = method->code;
            if (setting.applies(settings) && setting.key != "direction") {
                some.push_back(&setting);
                break;
            }
        }
    }
    return some;
}

SettingOptions::SettingOptions(std::int32_t direction) {
    base.direction = direction;
    for (const Setting* setting : settingsOf(direction)) {
        rows.push_back({setting, "", nullptr});
    }
}

// The words that an option takes.
static std::vector<std::string> wordsOf(const Setting& setting) {
    std::vector<std::string> words = setting.wordList();
    if (setting.leftToData != nullptr) {
        words.emplace_back(fromData);
    }
    return words;
}

static std::string problemWith(const Setting& setting, const std::string& word) {
    if (setting.leftToData == nullptr) {
        return setting.problemWith(word);
    }
    const std::string problem = word == fromData ? "" : setting.problemWith(word);
    return problem.empty() ? "" : fmt::format("{}, or {}", problem, fromData);
}

static std::string groupOf(const Setting& setting) {
    if (setting.needs.starts_with("method=")) {
        return "Options of --method " + setting.needs.substr(setting.needs.find('=') + 1);
    }
    return setting.key == "per" ? "Blocks" : "Method";
}

void SettingOptions::addTo(CLI::App& command, const std::vector<std::string>& except) {
    std::erase_if(rows, [&](const Row& row) {
        return std::find(except.begin(), except.end(), row.setting->key) != except.end();
    });
    for (Row& row : rows) {  // the command holds on to the values: rows stay where they are
        const Setting& setting = *row.setting;
        row.option = command.add_option("--" + setting.key, row.value, setting.about)
                         ->check(settingValue(wordsOf(setting), setting.takesNumber(),
                                              [&setting](const std::string& word) {
                                                  return problemWith(setting, word);
                                              }))
                         ->type_name(wordsOf(setting).empty() ? "NUMBER" : "")
                         ->default_str(setting.word(base))
                         ->group(groupOf(setting));
    }
}

void SettingOptions::exclude(CLI::Option& other) {
    for (const Row& row : rows) {
        other.excludes(row.option);
    }
}

// An option that was not given keeps its value empty, which no setting takes.
FendraSettings SettingOptions::settings() const {
    FendraSettings settings = base;
    for (const Row& row : rows) {
        if (!row.value.empty() && row.value != fromData) {
            row.setting->assign(settings, row.value);
        }
    }
    return settings;
}

LeftToData SettingOptions::leftToData() const {
    LeftToData left;
    for (const Row& row : rows) {
        if (row.value == fromData) {
            left.*row.setting->leftToData = true;
        }
    }
    return left;
}

bool SettingOptions::isGiven(const std::string& key) const {
    return std::any_of(rows.begin(), rows.end(), [&](const Row& row) {
        return row.setting->key == key && !row.value.empty();
    });
}

std::string SettingOptions::words() const {
    std::string words;
    for (const Row& row : rows) {
        words += row.value.empty() ? "" : fmt::format(" --{} {}", row.setting->key, row.value);
    }
    return words;
}

// An option without effect would let a person believe that it had one.
void SettingOptions::refuseIgnored(const std::vector<FendraSettings>& used) const {
    for (const Row& row : rows) {
        const auto applies = [&](const FendraSettings& settings) {
            return row.setting->applies(settings);
        };
        if (!row.value.empty() && std::none_of(used.begin(), used.end(), applies)) {
            std::string needs = row.setting->needs;
            std::replace(needs.begin(), needs.end(), '=', ' ');
            throw CLI::ValidationError("--" + row.setting->key,
                                       fmt::format("plays no part here; it goes with --{}", needs));
        }
    }
}

std::string optionWords(const FendraSettings& settings, const LeftToData& left) {
    std::string words, last;
    for (const Setting* setting : Setting::applyingTo(settings)) {
        if (left.method && setting->key == "method") {
            continue;  // whatever chooses it says so
        }
        const bool isLeft = setting->leftToData != nullptr && left.*setting->leftToData;
        const std::string option =
            fmt::format("--{} {} ", setting->key, isLeft ? fromData : setting->word(settings));
        if (setting->key == "per") {
            last = option;
        } else if (setting->key != "direction") {
            words += option;
        }
    }
    words += last;
    words.pop_back();
    return words;
}
