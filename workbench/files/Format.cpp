#include "workbench/files/Format.h"

#include "workbench/system/offer.h"

#include <fmt/format.h>

// Whether it can be read here.
static bool isHere(const Format& format) {
    return format.program == nullptr || Offer::here.parts;
}

std::string Format::names(std::string_view lastWord) {
    std::string text;
    for (const Format* format : all()) {
        if (!isHere(*format)) {
            continue;
        }
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
        if (format->create == nullptr || !isHere(*format)) {
            continue;
        }
        for (const char* ending : format->endings) {
            text += fmt::format("{}{}", text.empty() ? "" : " ", ending);
        }
    }
    return text;
}
