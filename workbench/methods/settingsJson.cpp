#include "workbench/methods/settingsJson.h"

#include "workbench/methods/Setting.h"

#include <nlohmann/json.hpp>

#include <string>
#include <variant>

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
