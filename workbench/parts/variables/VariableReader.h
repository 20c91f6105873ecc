#pragma once

#include "workbench/parts/variables/Conventions.h"
#include "workbench/parts/variables/SampleRows.h"
#include "workbench/signals/SignalReader.h"

#include <cstdint>
#include <memory>
#include <vector>

// A variable as a signal, read block by block in constant memory. Read throws a Failure where an
// integer is one that no double holds, unless options.lossy, or where a value is missing, unless
// options.allowNonfinite.
class VariableReader final : public SignalReader {
public:
    VariableReader(SignalInfo info, std::unique_ptr<SampleRows> variable, const Packing& itsPacking,
                   ReadOptions readOptions);

    std::int64_t read(double* interleaved, std::int64_t count) override;

private:
    void fill();
    void unpack();
    [[nodiscard]] std::string placeOf(std::size_t index) const;

    std::unique_ptr<SampleRows> rows;
    Packing packing;
    ReadOptions options;
    std::vector<double> block;
    std::int64_t position = 0;  // of the sample that is asked for next
    std::int64_t blockBegin = 0, blockEnd = 0;
};
