#pragma once

#include "workbench/files/instrument/SacHeader.h"
#include "workbench/signals/BlockedReader.h"
#include "workbench/system/FileHandle.h"

#include <vector>

// The time series of a SAC file of version 6 or 7, in either order of bytes, read in constant
// memory.
class SacReader final : public BlockedReader {
public:
    // Failure as openSignal.
    SacReader(FileHandle opened, const SourceName& source, const ReadOptions& options);

private:
    void fill(std::int64_t first, std::int64_t count, double* to) override;

    FileHandle file;
    SacHeader header;
    std::vector<std::uint8_t> bytes;
};
