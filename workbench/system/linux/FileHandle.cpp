#include "workbench/system/FileHandle.h"

#include <cerrno>
#include <cstdlib>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

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
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::temp_directory_path(error);
    std::string name = folder / "fendra-XXXXXX";
    const int descriptor = error ? -1 : mkstemp(name.data());
    if (descriptor == -1) {
        errno = error ? error.value() : errno;
        return nullptr;
    }
    unlink(name.c_str());
    return FileHandle(fdopen(descriptor, "w+b"));
}

bool hasName(std::FILE* file) {
    struct stat facts = {};
    return fstat(fileno(file), &facts) == 0 && facts.st_nlink > 0;
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
