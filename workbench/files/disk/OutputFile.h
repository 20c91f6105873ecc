#pragma once

#include "workbench/files/disk/FileStream.h"

#include <filesystem>
#include <string>
#include <string_view>

// A file being written. The name it is to have belongs to the old file, or to none, until commit:
// the bytes go to .NAME.RANDOM.part beside it. Whatever else the name stands for, a device or a
// pipe, is written directly. Every Failure names the file.
class OutputFile {
public:
    // Of a symbolic link, the file that it leads to is written.
    // Failure if a file of that name exists, unless replace; or if it cannot be written.
    OutputFile(const SourceName& output, bool replace);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Without commit nothing is left.
    ~OutputFile();

    // Whether stream can be sought in.
    bool seekable() const { return !partial.empty(); }
    std::FILE* stream() const { return file != nullptr ? file.get() : stdout; }

    void write(std::string_view bytes);

    // Closes the file and gives it its name. Failure if not all could be written, or if, unless
    // replace, there is a file of that name by now: then that one stays.
    void commit();

    // The Failure for the C library's latest error. The file is no good any more, but stays open
    // for whoever writes through stream.
    [[noreturn]] void fail();

private:
    void createPartial();
    void removePartial();
    void moveIntoPlace();

    std::string name;  // for messages
    std::filesystem::path target, partial;
    bool replaces;
    FileHandle file;  // null: standard output
};

// Removes the partial file of the OutputFile made last, if it is still there. For signal handlers:
// it touches nothing but a fixed buffer and removeFile.
void removePartialOutput();
