#pragma once

#include "workbench/files/array/NpyHeader.h"
#include "workbench/files/array/SampleType.h"
#include "workbench/files/disk/FileStream.h"
#include "workbench/signals/SignalReader.h"

#include <cstdint>
#include <vector>

// An array of an .npy file, read in constant memory: by rows as they stand there, or, where the
// file goes by columns, a block of each column at a time.
class NpyReader final : public SignalReader {
public:
    // The array stands in the file from byte begin on, header first, and has so many bytes at most.
    // Values that may be unfit are looked at: floating point, and integers of 64 bits.
    NpyReader(FileHandle opened, std::int64_t begin, std::int64_t available,
              const SourceName& source, const ReadOptions& options);

    std::int64_t read(double* interleaved, std::int64_t count) override;

private:
    void check(const ReadOptions& options);
    void checkValues(std::int64_t first, std::size_t count, const ReadOptions& options);
    [[nodiscard]] std::string placeOf(std::int64_t index) const;
    void readValues(std::int64_t first, std::size_t count, double* to);
    void fill();

    FileHandle file;
    NpyHeader header;
    const SampleType* type;
    std::int64_t samplesAt;           // in the file
    std::vector<std::uint8_t> bytes;  // as they stand there
    std::vector<double> values;       // of a column, or in the order of the file
    std::vector<double> block;        // samples that were read and not yet asked for
    std::int64_t position = 0;        // of the sample that is asked for next
    std::int64_t blockBegin = 0, blockEnd = 0;
};
