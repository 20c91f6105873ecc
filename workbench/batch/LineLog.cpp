#include "workbench/batch/LineLog.h"

#include "workbench/files/disk/FileStream.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/system/fileNames.h"

#include <fmt/format.h>

#include <cstdio>
#include <utility>

static bool endsTorn(const std::filesystem::path& path) {
    const FileHandle file = openFile(path, "rb");
    return file != nullptr && seekFile(file.get(), -1, SEEK_END) && std::getc(file.get()) != '\n';
}

LineLog::LineLog(const std::filesystem::path& path)
    : name(printable(nameOf(path.generic_u8string()))) {
    const bool torn = endsTorn(path);
    file = openFile(path, "ab");
    if (file == nullptr) {
        throw Failure(fmt::format("cannot write {}: {}; check the folder and the right to write",
                                  name, errorText()));
    }
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    if (torn) {
        append("");
    }
}

void LineLog::append(std::string line) {
    line += '\n';
    const std::lock_guard lock(mutex);
    if (std::fwrite(line.data(), 1, line.size(), file.get()) < line.size()) {
        throw Failure(fmt::format("cannot write {}: {}; make room and give the same command again",
                                  name, errorText()));
    }
}
