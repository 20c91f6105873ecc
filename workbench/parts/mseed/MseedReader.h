#pragma once

#include "workbench/parts/mseed/MseedRecords.h"
#include "workbench/signals/SignalReader.h"

#include <cstdint>
#include <string>
#include <vector>

// A channel of a miniSEED file, a record at a time.
class MseedReader final : public SignalReader {
public:
    // options.part is the name of a channel. Failure as MseedRecords, or if it has gaps or
    // overlaps.
    MseedReader(const std::string& path, const SourceName& source, const ReadOptions& options);

    // Failure also where the samples of a record are damaged.
    std::int64_t read(double* interleaved, std::int64_t count) override;

private:
    bool fill();

    MseedRecords records;
    std::string channel;
    std::vector<double> block;  // of the record under way
    std::size_t taken = 0;      // of its samples
};
