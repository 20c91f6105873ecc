#include "workbench/files/disk/OutputFile.h"

#include "workbench/messages/Failure.h"
#include "workbench/system/fileNames.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <random>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

// The path that removePartialOutput takes away. The flag is up while the path is complete.
static std::array<fs::path::value_type, 4096> watchedPath;
static std::atomic<bool> watching = false;

static void watch(const fs::path& path) {
    watching = false;
    const std::size_t length = path.native().size();
    if (length < watchedPath.size()) {
        std::copy_n(path.c_str(), length + 1, watchedPath.begin());
        watching = true;
    }
}

void removePartialOutput() {
    if (watching) {
        removeFile(watchedPath.data());
    }
}

// Where writing to path ends up. Unlike fs::canonical it takes a link that leads to no file yet.
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
        file = openFile(target, "wb");
        if (file == nullptr) {
            failToCreate(name);
        }
        return;
    }
    createPartial();
    if (fs::exists(status)) {
        fs::permissions(partial, status.permissions(), ignored);  // those of the file it replaces
    }
}

void OutputFile::createPartial() {
    std::random_device random;
    fs::path partialName = ".";
    partialName += target.filename().native().substr(0, 200);  // room for the rest
    partialName += fmt::format(".{:08x}.part", random());
    partial = target.parent_path() / partialName;
    file = createFile(partial);
    if (file == nullptr) {
        failToCreate(name);
    }
    watch(partial);
}

OutputFile::~OutputFile() {
    removePartial();
}

void OutputFile::removePartial() {
    file.reset();
    if (!partial.empty()) {
        std::error_code ignored;
        fs::remove(partial, ignored);
        partial.clear();
        watching = false;
    }
}

void OutputFile::fail() {
    throw Failure(
        fmt::format("cannot write {}: {}; make room or choose another place", name, errorText()));
}

void OutputFile::write(std::string_view bytes) {
    errno = 0;
    if (std::fwrite(bytes.data(), 1, bytes.size(), stream()) < bytes.size()) {
        fail();
    }
}

void OutputFile::commit() {
    errno = 0;
    if (std::fflush(stream()) != 0 || std::ferror(stream()) != 0) {
        fail();
    }
    if (file != nullptr && std::fclose(file.release()) != 0) {
        fail();
    }
    if (!partial.empty()) {
        moveIntoPlace();
    }
}

// A new link fails where a rename would silently replace what has come up in the meantime. Not
// every file system has links.
void OutputFile::moveIntoPlace() {
    std::error_code error, ignored;
    if (!replaces) {
        fs::create_hard_link(partial, target, error);
        if (error == std::errc::file_exists || (error && fs::exists(target, ignored))) {
            refuseExisting(name);
        }
    }
    if (replaces || error) {
        fs::rename(partial, target, error);
    }
    if (error) {
        throw Failure(
            fmt::format("cannot put {} in its place: {}; check the folder", name, error.message()));
    }
    removePartial();
}
