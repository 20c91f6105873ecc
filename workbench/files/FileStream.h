#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

// What the C library says about its latest error.
std::string errorText();

// fopen; null with errno set.
FileHandle openFile(const std::string& path, const char* mode);

// A file that has no name and goes with its handle. Failure if there is no room for one.
FileHandle openTemporary();

// What messages call the file of that path: "standard input" for "-", else the path, printable.
std::string inputName(const std::string& path);

// The file of that path for reading, at its start and ready to be sought in: what cannot be, a pipe
// or "-" for standard input, is copied to a temporary file. Failure if there is nothing to read.
FileHandle openInput(const std::string& path);

// fseek and ftell for files of any length. seekFile returns whether it could; origin as for fseek.
bool seekFile(std::FILE* file, std::int64_t offset, int origin);
std::int64_t filePosition(std::FILE* file);
