#pragma once

#include "workbench/files/disk/OutputFile.h"
#include "workbench/files/parts/PartProgram.h"
#include "workbench/signals/SignalWriter.h"

#include <string>
#include <vector>

// A signal that a part writes: the samples are kept in a temporary file until the notes are
// complete, then the part makes a file of them.
class PartWriter final : public SignalWriter {
public:
    // Failure if the target has an encoding of integers or cannot be written, or if there is no
    // part.
    PartWriter(const PartProgram& program, SignalTarget signalTarget, ResultInfo info);

    void write(const double* interleaved, std::int64_t count) override;
    void finish(const std::vector<std::string>& closingNotes) override;

private:
    void checkRange(const double* interleaved, std::int64_t count) const;

    const PartProgram& part;
    SignalTarget target;
    ResultInfo result;
    OutputFile output;
    FileHandle spool;
    std::int64_t samples = 0;
};
