#pragma once

#include "workbench/files/instrument/UffDataset.h"
#include "workbench/files/instrument/UffValues.h"
#include "workbench/signals/FilePart.h"
#include "workbench/signals/SignalReader.h"
#include "workbench/system/FileHandle.h"

#include <vector>

// Datasets 58 of a universal file: one as a signal, or all of them as its channels, read in
// constant memory.
class UffReader final : public SignalReader {
public:
    // The datasets by their numbers from 1, and, if all are signals of the same axis and length,
    // "all". Failure if it is not such a file.
    static std::vector<FilePart> parts(std::FILE* file, const SourceName& source);

    // options.part is one of these. Failure as openSignal.
    UffReader(FileHandle opened, const SourceName& source, const ReadOptions& options);

    std::int64_t read(double* interleaved, std::int64_t count) override;

private:
    void rewind();
    void setFacts();
    void check();
    void fill();

    FileHandle file;
    std::vector<UffDataset> channels;
    std::vector<UffValues> values;  // of each
    std::vector<double> column;     // of a channel
    std::vector<double> block;      // samples that were read, from blockBegin to blockEnd
    std::int64_t position = 0;      // of the sample that is asked for next
    std::int64_t blockBegin = 0, blockEnd = 0;
};
