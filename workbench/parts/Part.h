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
    const char* library;       // as people know it: "libmatio"
    std::string (*version)();  // of the library that is used: "1.5.23"

    // As the operations of Format. A path may be that of a descriptor; the names are for messages.
    // A reader need not look for NaN and infinity: partMain does.
    std::vector<FilePart> (*parts)(const std::string& path, const SourceName& file);
    std::unique_ptr<SignalReader> (*open)(const std::string& path, const SourceName& source,
                                          const ReadOptions& options);

    // Writes a file with all of the samples, which come from their beginning; info.notes are all
    // notes, and the encoding of the target is float64 or float32, whose range the samples do not
    // exceed. Null: the part does not write.
    void (*write)(const std::string& path, SignalReader& samples, const SignalTarget& target,
                  const ResultInfo& info);
};

// The main operation of the program, whose words are
//     version                    prints library and version
//     list NAME                  parts: three texts each, the fields of FilePart, which end in '\0'
//     read NAME PART [--allow-nonfinite] [--lossy] [--axis AXIS]
//                                the signal as Transfer has it
//     write NAME                 a file of the format, from a Transfer
// The input is the file that stands for standard input, the output goes to the one that stands for
// standard output; NAME is what messages call the file of the format. A failure is one line on
// standard error, and status 1.
int partMain(const Part& part, int argc, char** argv);
