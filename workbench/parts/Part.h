#pragma once

#include "workbench/signals/FilePart.h"
#include "workbench/signals/SignalReader.h"
#include "workbench/signals/SignalWriter.h"

#include <memory>
#include <string>
#include <vector>

// A part of the workbench that is a program of its own, because it reads and writes files by a
// library: fendra needs the library only where such a file is met, and a file on which the library
// breaks down breaks the part alone.
struct Part {
    const char* library;  // as people know it, with the version that is used: "libmatio 1.5.23"

    // As the operations of Format. A path may be that of a descriptor; the names are for messages.
    std::vector<FilePart> (*parts)(const std::string& path, const SourceName& file);
    std::unique_ptr<SignalReader> (*open)(const std::string& path, const SourceName& source,
                                          const ReadOptions& options);

    // Writes a file with all of the samples, which come from their beginning; info.notes are all
    // notes. Null: the part does not write.
    void (*write)(const std::string& path, SignalReader& samples, const SignalTarget& target,
                  const ResultInfo& info);
};

// The main operation of the program.
int partMain(const Part& part, int argc, char** argv);
