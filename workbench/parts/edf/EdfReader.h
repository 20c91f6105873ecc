#pragma once

#include "workbench/parts/edf/EdfFile.h"
#include "workbench/parts/edf/EdfScale.h"
#include "workbench/signals/SignalReader.h"

#include <cstdint>
#include <string>
#include <vector>

// A signal of an EDF or BDF file, in its physical unit.
class EdfReader final : public SignalReader {
public:
    // options.part is the name of a signal. Failure as EdfFile.
    EdfReader(const std::string& path, const SourceName& source, const ReadOptions& options);

    std::int64_t read(double* interleaved, std::int64_t count) override;

private:
    EdfFile file;
    int signal;
    EdfScale scale;
    std::vector<int> digital;
    std::int64_t position = 0;
};
