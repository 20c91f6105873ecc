#include "workbench/batch/resultFolder.h"

#include "workbench/messages/Failure.h"
#include "workbench/signals/SourceName.h"
#include "workbench/system/fileNames.h"

#include <fmt/format.h>

#include <system_error>

std::filesystem::path resultFolder(const std::string& folder) {
    std::error_code error;
    std::filesystem::create_directories(pathOf(folder), error);
    if (error) {
        throw Failure(fmt::format("cannot make the folder {}: {}; choose another with --into",
                                  SourceName(folder).shown, error.message()));
    }
    return pathOf(folder);
}
