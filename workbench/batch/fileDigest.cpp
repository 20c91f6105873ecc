#include "workbench/batch/fileDigest.h"

#include "workbench/files/SourcePart.h"
#include "workbench/files/disk/FileStream.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/system/Sha256.h"
#include "workbench/system/fileNames.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <vector>

std::string fileDigest(const std::string& file) {
    const std::filesystem::path path = pathOf(SourcePart(file).file);
    std::error_code ignored;
    const auto status = std::filesystem::status(path, ignored);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        throw Failure(fmt::format("{} is not an ordinary file; a batch reads its files twice",
                                  printable(file)));
    }
    const FileHandle opened = openFile(path, "rb");
    if (opened == nullptr) {
        throw Failure(fmt::format("cannot open {}: {}; check the name and the right to read it",
                                  printable(file), errorText()));
    }
    std::setvbuf(opened.get(), nullptr, _IONBF, 0);
    Sha256 hash;
    thread_local std::vector<std::uint8_t> block(std::size_t{1} << 16);
    while (const std::size_t length = std::fread(block.data(), 1, block.size(), opened.get())) {
        hash.add(block.data(), length);
    }
    if (std::ferror(opened.get()) != 0) {
        throw Failure(fmt::format("cannot read {}: {}", printable(file), errorText()));
    }
    return hash.hex();
}
