#pragma once

#include "workbench/signals/FilePart.h"
#include "workbench/signals/SignalReader.h"
#include "workbench/signals/SignalWriter.h"
#include "workbench/system/FileHandle.h"

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

// A program beside fendra that reads, and perhaps writes, files by a library;
// workbench/parts/Part.h is its other side. It works on the open file, and its results come in
// unnamed temporary files, so that memory stays constant on this side. A Failure of each operation:
// the program or its library is missing, which names what a user installs; it broke down on the
// file; or what it says itself.
struct PartProgram {
    const char* name;     // "fendra-mat"
    const char* library;  // "libmatio"
    const char* package;  // with the library, as a user installs it: "libmatio11"
    const char* headers;  // the package to build with: "libmatio-dev"

    // Library and version, "libmatio 1.5.23": the program can run. about: what it is wanted for, as
    // the beginning of a Failure.
    std::string version(const std::string& about) const;

    // As the operations of Format.
    [[nodiscard]] std::vector<FilePart> parts(std::FILE* file, const SourceName& source) const;
    [[nodiscard]] std::unique_ptr<SignalReader> open(std::FILE* file, const SourceName& source,
                                                     const ReadOptions& options) const;

    // Writes a file of the format with all of the samples of a Transfer.
    void write(std::FILE* transfer, std::FILE* to, const SourceName& target) const;
};
