#pragma once

#include "workbench/files/instrument/UffDataset.h"
#include "workbench/files/instrument/UffValues.h"
#include "workbench/signals/BlockedReader.h"
#include "workbench/signals/FilePart.h"
#include "workbench/system/FileHandle.h"

#include <vector>

// Datasets 58 of a universal file: one as a signal, or all of them as its channels, read in
// constant memory.
class UffReader final : public BlockedReader {
public:
    // The datasets by their numbers from 1, and, if all are signals of the same axis and length,
    // "all". Failure if it is not such a file.
    static std::vector<FilePart> parts(std::FILE* file, const SourceName& source);

    // options.part is one of these. Failure as openSignal.
    UffReader(FileHandle opened, const SourceName& source, const ReadOptions& options);

private:
    void fill(std::int64_t first, std::int64_t count, double* to) override;
    void rewind();
    void setFacts();

    FileHandle file;
    std::vector<UffDataset> channels;
    std::vector<UffValues> values;  // of each
    std::vector<double> column;     // of a channel
};
