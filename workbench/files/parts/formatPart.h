#pragma once

#include "workbench/files/parts/PartProgram.h"
#include "workbench/files/parts/PartWriter.h"
#include "workbench/system/FileHandle.h"

#include <memory>
#include <vector>

// The operations of a row of the table of formats whose files a part reads and writes.

template <const PartProgram& program>
std::vector<FilePart> partsByProgram(std::FILE* file, const SourceName& source) {
    return program.parts(file, source);
}

template <const PartProgram& program>
std::unique_ptr<SignalReader> openByProgram(FileHandle file, const SourceName& source,
                                            const ReadOptions& options) {
    return program.open(file.get(), source, options);
}

template <const PartProgram& program>
std::unique_ptr<SignalWriter> createByProgram(const SignalTarget& target, const ResultInfo& info) {
    return std::make_unique<PartWriter>(program, target, info);
}
