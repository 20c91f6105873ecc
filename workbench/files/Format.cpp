#include "workbench/files/Format.h"

#include <fmt/format.h>

std::string Format::names(std::string_view lastWord) {
    std::string text;
    for (const Format* format : all()) {
        if (format == all().back()) {
            text += fmt::format(" {} ", lastWord);
        } else if (!text.empty()) {
            text += ", ";
        }
        text += format->name;
    }
    return text;
}

std::string Format::allEndings() {
    std::string text;
    for (const Format* format : all()) {
        if (format->create == nullptr) {
            continue;
        }
        for (const char* ending : format->endings) {
            text += fmt::format("{}{}", text.empty() ? "" : " ", ending);
        }
    }
    return text;
}
