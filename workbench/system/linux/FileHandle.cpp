#include "workbench/system/FileHandle.h"

#include <sys/file.h>

FileHandle openFile(const std::filesystem::path& path, const char* mode) {
    return FileHandle(std::fopen(path.c_str(), mode));
}

FileHandle createFile(const std::filesystem::path& path) {
    FileHandle file = openFile(path, "w+bx");
    if (file != nullptr) {
        flock(fileno(file.get()), LOCK_EX | LOCK_NB);
    }
    return file;
}

bool isInUse(const std::filesystem::path& path) {
    const FileHandle file = openFile(path, "rb");
    return file == nullptr || flock(fileno(file.get()), LOCK_SH | LOCK_NB) != 0;
}

FileHandle createUnnamedFile() {
    return FileHandle(std::tmpfile());
}

void removeFile(const char* path) {
    std::remove(path);
}

bool seekFile(std::FILE* file, std::int64_t offset, int origin) {
    return fseeko(file, offset, origin) == 0;
}

std::int64_t filePosition(std::FILE* file) {
    return ftello(file);
}
