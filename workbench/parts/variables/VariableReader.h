#pragma once

#include "workbench/parts/variables/Conventions.h"
#include "workbench/parts/variables/SampleRows.h"
#include "workbench/signals/BlockedReader.h"

#include <cstdint>
#include <memory>
#include <vector>

// A variable as a signal, read block by block in constant memory. Read throws a Failure where an
// integer is one that no double holds, unless options.lossy, or where a value is missing, unless
// options.allowNonfinite.
class VariableReader final : public BlockedReader {
public:
    VariableReader(SignalInfo info, std::unique_ptr<SampleRows> variable, const Packing& itsPacking,
                   ReadOptions readOptions);

private:
    void fill(std::int64_t first, std::int64_t count, double* to) override;
    [[nodiscard]] std::string placeOf(std::int64_t index) const;

    std::unique_ptr<SampleRows> rows;
    Packing packing;
    ReadOptions options;
};
