#pragma once

#include "workbench/files/disk/PartialFile.h"
#include "workbench/signals/SourceName.h"
#include "workbench/system/FileHandle.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

// A file being written. Until commit, the target name still refers to the old file, if any: the
// bytes go to a partial file beside it. A device or a pipe is written directly. Every Failure names
// the file.
class OutputFile {
public:
    // The name is made by SourceName::ofOutput. Of a symbolic link, the file that it leads to is
    // written. Failure if a file of that name exists, unless replace; or if it cannot be written.
    OutputFile(const SourceName& output, bool replace);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Without commit nothing is left.
    ~OutputFile() = default;

    // Whether stream can be sought in.
    bool seekable() const { return partial != nullptr; }
    std::FILE* stream() const { return sink; }

    void write(std::string_view bytes);
    // All that a file holds.
    void copy(std::FILE* file);

    // What was written has left the program then.
    void flush();

    // Closes the file and gives it its name. Failure if not all of it could be written, or if,
    // unless replace, a file of that name exists by now: then that one stays.
    void commit();

    // The Failure for the C library's latest error. The file is unusable from then on, but stays
    // open for whoever writes through stream.
    [[noreturn]] void fail();

private:
    void close(FileHandle& file);
    void moveIntoPlace();

    std::string name;  // for messages
    std::filesystem::path target;
    bool replaces;
    FileHandle device;                     // a device or a pipe
    std::unique_ptr<PartialFile> partial;  // a file; neither: standard output
    std::FILE* sink = stdout;              // of the one that is written
};
