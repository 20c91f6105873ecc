#include "workbench/system/fileNames.h"

#include <algorithm>
#include <cctype>

std::filesystem::path pathOf(const std::string& name) {
    return std::u8string(name.begin(), name.end());
}

std::string nameOf(const std::filesystem::path& path) {
    const std::u8string name = path.u8string();
    return {name.begin(), name.end()};
}

std::string lowerCaseEnding(const std::string& name) {
    std::string ending = nameOf(pathOf(name).extension());
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return ending;
}
