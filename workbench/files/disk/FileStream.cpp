#include "workbench/files/disk/FileStream.h"

#include "workbench/messages/Failure.h"
#include "workbench/system/fileNames.h"

#include <fmt/format.h>

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <vector>

std::string errorText() {
    return errno == 0 ? "write error" : std::generic_category().message(errno);
}

FileHandle openTemporary() {
    FileHandle file = createUnnamedFile();
    if (file == nullptr) {
        throw Failure(
            fmt::format("cannot create a temporary file: {}; make room for it", errorText()));
    }
    return file;
}

// A temporary file with all that is left in source, at its start.
static FileHandle spool(std::FILE* source, const std::string& name) {
    FileHandle copy = openTemporary();
    std::vector<char> block(std::size_t{1} << 16);
    std::size_t length = 0;
    do {
        length = std::fread(block.data(), 1, block.size(), source);
        if (std::fwrite(block.data(), 1, length, copy.get()) < length) {
            throw Failure(fmt::format("cannot keep {} in a temporary file: {}; make room for it",
                                      name, errorText()));
        }
    } while (length > 0);
    if (std::ferror(source) != 0) {
        throw Failure(fmt::format("cannot read {}: {}", name, errorText()));
    }
    std::rewind(copy.get());
    return copy;
}

FileHandle openInput(const SourceName& source) {
    const std::string& name = source.shown;
    if (source.isStandardStream()) {
        return spool(stdin, name);
    }
    const std::filesystem::path path = pathOf(source.path);
    std::error_code ignored;
    const std::filesystem::file_status status = std::filesystem::status(path, ignored);
    if (std::filesystem::is_directory(status)) {
        throw Failure(fmt::format("{} is a folder; name a file in it", name));
    }
    FileHandle file = openFile(path, "rb");
    if (file == nullptr) {
        throw Failure(fmt::format("cannot open {}: {}; check the name and the right to read it",
                                  name, errorText()));
    }
    return std::filesystem::is_regular_file(status) ? std::move(file) : spool(file.get(), name);
}
