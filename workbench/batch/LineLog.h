#pragma once

#include "workbench/system/FileHandle.h"

#include <filesystem>
#include <mutex>
#include <string>

// A file that grows by whole lines, from several threads. Each is one write to the system, so that
// a program which is killed leaves at most the last one torn; a torn line of an earlier program is
// ended before the first new one, and is left for readers to pass over.
class LineLog {
public:
    // Failure if the file cannot be written.
    explicit LineLog(const std::filesystem::path& path);

    // line: without its line feed. Failure if it cannot be written.
    void append(std::string line);

private:
    std::string name;  // for messages
    std::mutex mutex;
    FileHandle file;
};
