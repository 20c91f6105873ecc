#include "workbench/figures/Picture.h"

#include <algorithm>
#include <array>
#include <utility>

std::optional<PictureFormat> pictureFormatOf(const std::string& file) {
    constexpr std::array<std::pair<const char*, PictureFormat>, 3> endings = {
        {{".png", PictureFormat::png}, {".svg", PictureFormat::svg}, {".pdf", PictureFormat::pdf}}};
    std::string name = file;
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    for (const auto& [ending, format] : endings) {
        if (name.ends_with(ending)) {
            return format;
        }
    }
    return std::nullopt;
}
