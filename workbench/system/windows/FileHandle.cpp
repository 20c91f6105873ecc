#include "workbench/system/FileHandle.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <io.h>
#include <random>
#include <string>
#include <windows.h>

FileHandle openFile(const std::filesystem::path& path, const char* mode) {
    return FileHandle(_wfopen(path.c_str(), std::wstring(mode, mode + std::strlen(mode)).c_str()));
}

static int errorNumber(DWORD error) {
    switch (error) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_INVALID_NAME:
            return ENOENT;
        case ERROR_FILE_EXISTS:
        case ERROR_ALREADY_EXISTS:
            return EEXIST;
        case ERROR_ACCESS_DENIED:
        case ERROR_SHARING_VIOLATION:
        case ERROR_WRITE_PROTECT:
            return EACCES;
        case ERROR_DISK_FULL:
            return ENOSPC;
        default:
            return EIO;
    }
}

// A new file, for others to read and remove meanwhile; the C library's own calls would lock it.
static FileHandle createShared(const std::filesystem::path& path, DWORD flags) {
    const HANDLE handle = CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, CREATE_NEW, flags, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        errno = errorNumber(GetLastError());
        return nullptr;
    }
    const int descriptor = _open_osfhandle(reinterpret_cast<intptr_t>(handle), _O_BINARY);
    if (descriptor < 0) {
        CloseHandle(handle);
        return nullptr;
    }
    std::FILE* const file = _fdopen(descriptor, "w+b");
    if (file == nullptr) {
        _close(descriptor);
    }
    return FileHandle(file);
}

FileHandle createFile(const std::filesystem::path& path) {
    return createShared(path, FILE_ATTRIBUTE_NORMAL);
}

bool isInUse(const std::filesystem::path& path) {
    const HANDLE alone = CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                     FILE_ATTRIBUTE_NORMAL, nullptr);
    if (alone == INVALID_HANDLE_VALUE) {
        return true;
    }
    CloseHandle(alone);
    return false;
}

FileHandle createUnnamedFile() {
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::temp_directory_path(error);
    if (error) {
        errno = ENOENT;
        return nullptr;
    }
    const std::string name = "fendra-" + std::to_string(std::random_device()()) + ".tmp";
    return createShared(folder / name, FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE);
}

bool hasName(std::FILE* /*file*/) {
    return true;  // as long as it is open
}

void removeFile(const wchar_t* path) {
    DeleteFileW(path);
}

bool seekFile(std::FILE* file, std::int64_t offset, int origin) {
    return _fseeki64(file, offset, origin) == 0;
}

std::int64_t filePosition(std::FILE* file) {
    return _ftelli64(file);
}
