#pragma once

#include "workbench/files/instrument/SacHeader.h"
#include "workbench/signals/SignalReader.h"
#include "workbench/system/FileHandle.h"

#include <vector>

// The time series of a SAC file of version 6 or 7, in either order of bytes, read in constant
// memory.
class SacReader final : public SignalReader {
public:
    // Failure as openSignal.
    SacReader(FileHandle opened, const SourceName& source, const ReadOptions& options);

    std::int64_t read(double* interleaved, std::int64_t count) override;

private:
    void check();
    void readBlock(double* to, std::int64_t count);

    FileHandle file;
    SacHeader header;
    std::vector<std::uint8_t> bytes;
    std::int64_t position = 0;  // of the sample that is asked for next
};
