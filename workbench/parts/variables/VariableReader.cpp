#include "workbench/parts/variables/VariableReader.h"

#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <utility>

VariableReader::VariableReader(SignalInfo info, std::unique_ptr<SampleRows> variable,
                               const Packing& itsPacking, ReadOptions readOptions)
    : rows(std::move(variable)), packing(itsPacking), options(std::move(readOptions)) {
    facts = std::move(info);
}

// Of the value of that number.
std::string VariableReader::placeOf(std::int64_t index) const {
    return fmt::format("{}, sample {}, channel {}", facts.source.shown, index / facts.channels + 1,
                       index % facts.channels + 1);
}

void VariableReader::fill(std::int64_t first, std::int64_t count, double* to) {
    const std::int64_t begin = first * facts.channels, length = count * facts.channels;
    const auto wide = static_cast<std::int64_t>(rows->read(first, count, to));
    if (wide < length && !options.lossy) {
        throw Failure(
            fmt::format("{}: an integer beyond 2^53, which a 64-bit float may not hold; use "
                        "--lossy to let it be rounded",
                        placeOf(begin + wide)));
    }
    if (packing.isPlain()) {
        return;
    }
    for (std::int64_t i = 0; i < length; ++i) {
        if (packing.isMissing(to[i]) && !options.allowNonfinite) {
            throw Failure(
                fmt::format("{}: the value is missing; use --allow-nonfinite to let it be NaN",
                            placeOf(begin + i)));
        }
        to[i] = packing.unpacked(to[i]);
    }
}
