#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

// fopen; null with errno set.
FileHandle openFile(const std::filesystem::path& path, const char* mode);

// A new file, to be written and read. It can be removed while it is open. Null with errno set, also
// if there is a file of that name.
FileHandle createFile(const std::filesystem::path& path);

// Whether a program has a file of createFile still open. True if that is not known.
bool isInUse(const std::filesystem::path& path);

// An unnamed temporary file, deleted when its handle closes, in the folder that the system names
// for such files: TMPDIR, where there is one. Null with errno set.
FileHandle createUnnamedFile();

// Whether an open file has a name by which others can open it.
bool hasName(std::FILE* file);

// Removes a file if it can. Touches nothing else: signal handlers may call it.
void removeFile(const std::filesystem::path::value_type* path);

// fseek and ftell for files of any length. seekFile returns whether it could; origin as for fseek.
bool seekFile(std::FILE* file, std::int64_t offset, int origin);
std::int64_t filePosition(std::FILE* file);
