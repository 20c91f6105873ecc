#pragma once

#include "workbench/files/array/NpyHeader.h"
#include "workbench/files/array/SampleType.h"
#include "workbench/files/disk/FileStream.h"
#include "workbench/signals/BlockedReader.h"

#include <cstdint>
#include <vector>

// An array of an .npy file, read in constant memory: by rows as they stand there, or, where the
// file goes by columns, a block of each column at a time.
class NpyReader final : public BlockedReader {
public:
    // The array stands in the file from byte begin on, header first, and has so many bytes at most.
    // Values that may be unfit are looked at: floating point, and integers of 64 bits.
    NpyReader(FileHandle opened, std::int64_t begin, std::int64_t available,
              const SourceName& source, const ReadOptions& options);

private:
    void fill(std::int64_t first, std::int64_t count, double* to) override;
    [[nodiscard]] std::string placeOf(std::int64_t index) const;
    void readValues(std::int64_t first, std::size_t count, double* to);

    FileHandle file;
    NpyHeader header;
    const SampleType* type;
    std::int64_t samplesAt;           // in the file
    std::vector<std::uint8_t> bytes;  // as they stand there
    std::vector<double> values;       // of a column
    bool lossy;                       // integers that no double holds are rounded
};
