#include "workbench/files/disk/OutputFile.h"

#include "workbench/files/disk/FileStream.h"
#include "workbench/messages/Failure.h"
#include "workbench/system/fileNames.h"

#include <fmt/format.h>

#include <cerrno>
#include <system_error>
#include <utility>
#include <vector>

namespace fs = std::filesystem;

// Where writing to path ends up. Unlike fs::canonical it accepts a link to a file that does not
// exist yet.
static fs::path followLinks(fs::path path) {
    std::error_code ignored;
    for (int depth = 0; depth < 40 && fs::is_symlink(path, ignored); ++depth) {
        path = path.parent_path() / fs::read_symlink(path, ignored);
    }
    return path;
}

[[noreturn]] static void refuseExisting(const std::string& name) {
    throw Failure(fmt::format("{} exists; choose another name or use --force", name));
}

[[noreturn]] static void failToCreate(const std::string& name) {
    throw Failure(fmt::format("cannot write {}: {}; check the folder and the right to write to it",
                              name, errorText()));
}

OutputFile::OutputFile(const SourceName& output, bool replace)
    : name(output.shown), replaces(replace) {
    if (output.isStandardStream()) {
        return;
    }
    target = followLinks(pathOf(output.path));
    std::error_code ignored;
    const fs::file_status status = fs::status(target, ignored);
    if (fs::is_directory(status)) {
        throw Failure(fmt::format("{} is a folder; name a file in it", name));
    }
    if (fs::is_regular_file(status) && !replace) {
        refuseExisting(name);
    }
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        device = openFile(target, "wb");
        sink = device.get();
    } else {
        partial = std::make_unique<PartialFile>(target);
        sink = partial->file.get();
    }
    if (sink == nullptr) {
        failToCreate(name);
    }
    if (partial != nullptr && fs::is_regular_file(status)) {
        fs::permissions(partial->path, status.permissions(), ignored);  // of the file it replaces
    }
}

void OutputFile::fail() {
    throw Failure(
        fmt::format("cannot write {}: {}; make room or choose another place", name, errorText()));
}

void OutputFile::write(std::string_view bytes) {
    errno = 0;
    if (std::fwrite(bytes.data(), 1, bytes.size(), sink) < bytes.size()) {
        fail();
    }
}

void OutputFile::copy(std::FILE* file) {
    std::vector<char> block(std::size_t{1} << 16);
    std::rewind(file);
    while (const std::size_t length = std::fread(block.data(), 1, block.size(), file)) {
        write({block.data(), length});
    }
}

void OutputFile::flush() {
    errno = 0;
    if (std::fflush(sink) != 0 || std::ferror(sink) != 0) {
        fail();
    }
}

void OutputFile::commit() {
    flush();
    if (device != nullptr) {
        close(device);
    }
    if (partial != nullptr) {
        close(partial->file);
        moveIntoPlace();
    }
}

void OutputFile::close(FileHandle& file) {
    if (std::fclose(file.release()) != 0) {
        fail();
    }
}

// A new link fails where a rename would silently replace a file that has appeared in the meantime.
// Not every file system has links.
void OutputFile::moveIntoPlace() {
    std::error_code error, ignored;
    if (!replaces) {
        fs::create_hard_link(partial->path, target, error);
        if (error == std::errc::file_exists || (error && fs::exists(target, ignored))) {
            refuseExisting(name);
        }
    }
    if (replaces || error) {
        fs::rename(partial->path, target, error);
    }
    if (error) {
        throw Failure(
            fmt::format("cannot put {} in its place: {}; check the folder", name, error.message()));
    }
    partial.reset();
}
