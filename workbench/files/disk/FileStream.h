#pragma once

#include "workbench/signals/SourceName.h"
#include "workbench/system/FileHandle.h"

#include <cstdio>
#include <string>
#include <string_view>

// The latest error of the C library, in words.
std::string errorText();

// An unnamed temporary file, deleted when its handle closes. Failure if there is no room for one.
FileHandle openTemporary();

// What can be read once only, from its first byte to its last: standard input, or a pipe or device.
class Pipe {
public:
    // Failure if there is something of that name that cannot be opened.
    explicit Pipe(const SourceName& source);

    // Null if the source is an ordinary file or folder, or there is none.
    [[nodiscard]] std::FILE* stream() const { return file; }

    // An unnamed temporary file with what was read before and all that is left, at its start.
    // Failure if it cannot be written, or the pipe not be read.
    [[nodiscard]] FileHandle copy(std::string_view before) const;

private:
    std::string name;
    FileHandle owned;
    std::FILE* file = nullptr;
};

// SHA-256 of what is left of a file, as 64 lower-case hexadecimal digits. Failure if it cannot be
// read; name is that of the file.
std::string digestOfRest(std::FILE* file, const std::string& name);

// A file for reading, at its start and ready to be sought in: what cannot be, a pipe or standard
// input, is copied to a temporary file. Failure if it cannot be opened or copied.
FileHandle openInput(const SourceName& source);
