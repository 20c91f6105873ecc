#include "workbench/system/FileHandle.h"

FileHandle openFile(const std::filesystem::path& path, const char* mode) {
    return FileHandle(std::fopen(path.c_str(), mode));
}

FileHandle createFile(const std::filesystem::path& path) {
    return openFile(path, "w+bx");
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
