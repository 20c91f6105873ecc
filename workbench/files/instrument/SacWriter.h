#pragma once

#include "workbench/files/disk/OutputFile.h"
#include "workbench/files/disk/SampleStore.h"
#include "workbench/files/instrument/SacHeader.h"
#include "workbench/signals/SignalWriter.h"

#include <limits>

// A signal of one channel as a little-endian SAC file of version 7. Its samples are 32-bit floats,
// its times doubles. Samples wait in a temporary file, since their range stands before them.
class SacWriter final : public SignalWriter {
public:
    // Failure if there are several channels, no rate, or an encoding of another kind; if the target
    // cannot be written; with write, if a sample is not a 32-bit float, unless the target is lossy
    // or that encoding was asked for.
    SacWriter(const SignalTarget& target, const ResultInfo& info);

    void write(const double* interleaved, std::int64_t count) override;
    void finish(const std::vector<std::string>& closingNotes) override;

private:
    void check(double sample) const;

    std::string shown;
    bool exact;  // samples have to be 32-bit floats
    SacHeader header;
    double smallest = std::numeric_limits<double>::infinity(), largest = -smallest, sum = 0.0;
    OutputFile output;
    SampleStore store;
};
