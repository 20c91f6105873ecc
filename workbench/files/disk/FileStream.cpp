#include "workbench/files/disk/FileStream.h"

#include "workbench/messages/Failure.h"
#include "workbench/system/Sha256.h"
#include "workbench/system/fileNames.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <system_error>
#include <vector>

std::string errorText() {
    return errno == 0 ? "write error" : std::generic_category().message(errno);
}

static FileHandle openExisting(const SourceName& source) {
    const std::filesystem::path path = pathOf(source.path);
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        throw Failure(fmt::format("{} is a folder; name a file in it", source.shown));
    }
    FileHandle file = openFile(path, "rb");
    if (file == nullptr) {
        throw Failure(fmt::format("cannot open {}: {}; check the name and the right to read it",
                                  source.shown, errorText()));
    }
    return file;
}

FileHandle openTemporary() {
    FileHandle file = createUnnamedFile();
    if (file == nullptr) {
        throw Failure(
            fmt::format("cannot create a temporary file: {}; make room for it, or name another "
                        "folder in TMPDIR",
                        errorText()));
    }
    return file;
}

Pipe::Pipe(const SourceName& source) : name(source.shown) {
    if (source.isStandardStream()) {
        file = stdin;
        return;
    }
    const std::filesystem::path path = pathOf(source.path);
    std::error_code ignored;
    const std::filesystem::file_status status = std::filesystem::status(path, ignored);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status) &&
        !std::filesystem::is_directory(status)) {
        owned = openExisting(source);
        file = owned.get();
    }
}

FileHandle Pipe::copy(std::string_view before) const {
    FileHandle copy = openTemporary();
    std::vector<char> block(before.begin(), before.end());
    std::size_t length = block.size();
    block.resize(std::max(length, std::size_t{1} << 16));
    do {
        if (std::fwrite(block.data(), 1, length, copy.get()) < length) {
            throw Failure(fmt::format("cannot keep {} in a temporary file: {}; make room for it",
                                      name, errorText()));
        }
        length = std::fread(block.data(), 1, block.size(), file);
    } while (length > 0);
    if (std::ferror(file) != 0) {
        throw Failure(fmt::format("cannot read {}: {}", name, errorText()));
    }
    std::rewind(copy.get());
    return copy;
}

std::string digestOfRest(std::FILE* file, const std::string& name) {
    Sha256 hash;
    thread_local std::vector<std::uint8_t> block(std::size_t{1} << 16);
    while (const std::size_t length = std::fread(block.data(), 1, block.size(), file)) {
        hash.add(block.data(), length);
    }
    if (std::ferror(file) != 0) {
        throw Failure(fmt::format("cannot read {}: {}", name, errorText()));
    }
    return hash.hex();
}

FileHandle openInput(const SourceName& source) {
    const Pipe pipe(source);
    return pipe.stream() != nullptr ? pipe.copy("") : openExisting(source);
}
