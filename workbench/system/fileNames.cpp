#include "workbench/system/fileNames.h"

std::filesystem::path pathOf(const std::string& name) {
    return std::u8string(name.begin(), name.end());
}

std::string nameOf(const std::filesystem::path& path) {
    const std::u8string name = path.u8string();
    return {name.begin(), name.end()};
}
