#include "workbench/files/SourcePart.h"

#include "workbench/signals/SourceName.h"
#include "workbench/system/fileNames.h"

#include <filesystem>

static bool isFile(const std::string& name) {
    if (SourceName(name).isStandardStream()) {
        return true;
    }
    std::error_code ignored;
    const std::filesystem::file_status status = std::filesystem::status(pathOf(name), ignored);
    return std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

SourcePart::SourcePart(const std::string& word) : file(word) {
    if (isFile(word)) {
        return;
    }
    for (std::size_t colon = word.find(':'); colon < word.size() - 1;
         colon = word.find(':', colon + 1)) {
        if (isFile(word.substr(0, colon))) {
            file = word.substr(0, colon);
            part = word.substr(colon + 1);
            return;
        }
    }
}
