#pragma once

#include "workbench/files/instrument/JcampBlock.h"
#include "workbench/files/instrument/JcampTable.h"
#include "workbench/signals/FilePart.h"
#include "workbench/signals/SignalReader.h"
#include "workbench/system/FileHandle.h"

#include <optional>
#include <vector>

// A block of a JCAMP-DX file, in constant memory.
class JcampReader final : public SignalReader {
public:
    // The blocks by their titles. Failure if one does not end.
    static std::vector<FilePart> parts(std::FILE* file, const SourceName& source);

    // options.part is one of these. Failure as openSignal.
    JcampReader(FileHandle opened, const SourceName& source, const ReadOptions& options);

    std::int64_t read(double* interleaved, std::int64_t count) override;

private:
    void setAxis(const EvenAxis& even);
    void readThrough();
    void fitPairs();

    FileHandle file;
    JcampBlock block;
    std::optional<JcampTable> table;
    std::int64_t position = 0;  // of the sample that is asked for next
};
