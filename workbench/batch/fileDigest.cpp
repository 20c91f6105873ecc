#include "workbench/batch/fileDigest.h"

#include "workbench/files/SourcePart.h"
#include "workbench/files/disk/FileStream.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/system/fileNames.h"

#include <fmt/format.h>

#include <cstdio>
#include <filesystem>
#include <system_error>

std::string fileDigest(const std::string& file) {
    const std::string whole = SourcePart(file).file;
    const std::filesystem::path path = pathOf(whole);
    std::error_code ignored;
    const auto status = std::filesystem::status(path, ignored);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        throw Failure(fmt::format("{} is not an ordinary file; a batch reads its files twice",
                                  printable(file)));
    }
    const FileHandle opened = openInput(SourceName(whole));
    std::setvbuf(opened.get(), nullptr, _IONBF, 0);
    return digestOfRest(opened.get(), printable(file));
}
