#include "workbench/methods/Setting.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <iterator>
#include <utility>

static const std::vector<std::string> offOn = {"off", "on"};

// The controls' ids are the module's public face of its dialog.
const std::vector<Setting>& Setting::all() {
    using S = FendraSettings;
    const std::string iteration = "method=van-cittert";
    static const std::vector<Setting> table = {
        {"direction", "", {"convolution", "deconvolution"}, {1025, 1026}, &S::direction},
        {"per", "", {"block", "packet"}, {1040, 1041}, &S::executionMode},
        {"domain", "direction=convolution", {"time", "frequency"}, {1023, 1024}, &S::method},
        {"method",
         "direction=deconvolution",
         {"spectral", "van-cittert", "pseudo-inverse"},
         {1024, 1027, 1028},
         &S::method,
         S::frequencyDomain},
        {"convergence", iteration, {}, {1030}, &S::convergence},
        {"max-iterations", iteration, {}, {1031}, &S::maxIterations},
        {"stop-at-error", iteration, offOn, {1032}, &S::abortAtError},
        {"stop-at-minimum", iteration, offOn, {1033}, &S::abortAtMinError},
        {"error-value", "stop-at-error=on", {}, {1034}, &S::errorValue},
        {"scaling",
         "method=pseudo-inverse",
         {"central", "magnitude", "manhattan", "filter", "none"},
         {1036},
         &S::scaling}};
    return table;
}

const Setting& Setting::named(const std::string& key) {
    return *std::find_if(all().begin(), all().end(),
                         [&](const Setting& setting) { return setting.key == key; });
}

std::size_t Setting::placeOf(const std::string& word) const {
    return static_cast<std::size_t>(std::find(words.begin(), words.end(), word) - words.begin());
}

std::variant<std::string, Setting::Number> Setting::value(const FendraSettings& settings) const {
    const Number number = std::visit([&](auto member) { return Number(settings.*member); }, field);
    if (words.empty()) {
        return number;
    }
    const std::int64_t held = std::get<std::int32_t>(number);
    // To the module a check box is on at any value but 0.
    const std::int64_t place = words == offOn ? (held != 0 ? 1 : 0) : held - firstWord;
    if (place < 0 || place >= std::ssize(words)) {
        return number;
    }
    return words[static_cast<std::size_t>(place)];
}

std::string Setting::word(const FendraSettings& settings) const {
    const auto held = value(settings);
    if (const auto* const known = std::get_if<std::string>(&held)) {
        return *known;
    }
    return std::visit([](auto number) { return fmt::format("{}", number); },
                      std::get<Number>(held));
}

std::string Setting::text(const FendraSettings& settings) const {
    return key + "=" + word(settings);
}

bool Setting::applies(const FendraSettings& settings) const {
    for (const Setting* setting = this; !setting->needs.empty();) {
        const Setting* const needed = Assignment(setting->needs).setting;
        if (needed->text(settings) != setting->needs) {
            return false;
        }
        setting = needed;
    }
    return true;
}

Assignment::Assignment(const std::string& keyAndValue) {
    const std::size_t equals = keyAndValue.find('=');
    setting = &Setting::named(keyAndValue.substr(0, equals));
    value = keyAndValue.substr(equals + 1);
}

unsigned Assignment::control() const {
    const std::vector<unsigned>& ids = setting->controls;
    return ids.size() == 1 ? ids.front() : ids.at(setting->placeOf(value));
}

std::string settingsLine(const FendraSettings& settings) {
    std::string line;
    for (const Setting& setting : Setting::all()) {
        if (setting.applies(settings)) {
            line += fmt::format("{}{}", line.empty() ? "" : " ", setting.text(settings));
        }
    }
    return line;
}

nlohmann::ordered_json settingsJson(const FendraSettings& settings) {
    using Json = nlohmann::ordered_json;
    const std::string notShown =
        settings.direction == FendraSettings::convolution ? "method" : "domain";
    Json all = Json::object();
    for (const Setting& setting : Setting::all()) {
        if (setting.key == notShown) {
            continue;
        }
        const auto held = setting.value(settings);
        const auto* const word = std::get_if<std::string>(&held);
        all[setting.key] = word != nullptr ? Json(*word)
                                           : std::visit([](auto number) { return Json(number); },
                                                        std::get<Setting::Number>(held));
    }
    return all;
}

std::string oddSetting(const FendraSettings& settings) {
    for (const Setting& setting : Setting::all()) {
        const auto held = setting.value(settings);
        if (!setting.words.empty() && !std::holds_alternative<std::string>(held) &&
            setting.applies(settings)) {
            return setting.text(settings);
        }
    }
    return "";
}
