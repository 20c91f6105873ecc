#include "workbench/parts/variables/VariableReader.h"

#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

static constexpr std::int64_t blockLength = 1 << 15;  // values, unless a row has more

VariableReader::VariableReader(SignalInfo info, std::unique_ptr<SampleRows> variable,
                               const Packing& itsPacking, ReadOptions readOptions)
    : rows(std::move(variable)), packing(itsPacking), options(std::move(readOptions)) {
    facts = std::move(info);
}

std::string VariableReader::placeOf(std::size_t index) const {
    const auto channels = static_cast<std::size_t>(facts.channels);
    return fmt::format("{}, sample {}, channel {}", facts.source.shown,
                       blockBegin + static_cast<std::int64_t>(index / channels) + 1,
                       index % channels + 1);
}

void VariableReader::unpack() {
    for (std::size_t i = 0; i < block.size(); ++i) {
        if (packing.isMissing(block[i]) && !options.allowNonfinite) {
            throw Failure(fmt::format(
                "{}: the value is missing; use --allow-nonfinite to let it be NaN", placeOf(i)));
        }
        block[i] = packing.unpacked(block[i]);
    }
}

void VariableReader::fill() {
    const std::int64_t length =
        std::min(std::max<std::int64_t>(1, blockLength / facts.channels), facts.samples - position);
    block.resize(static_cast<std::size_t>(length * facts.channels));
    blockBegin = position;
    blockEnd = position + length;
    const std::size_t wide = rows->read(position, length, block.data());
    if (wide < block.size() && !options.lossy) {
        throw Failure(
            fmt::format("{}: an integer beyond 2^53, which a 64-bit float may not hold; use "
                        "--lossy to let it be rounded",
                        placeOf(wide)));
    }
    if (!packing.isPlain()) {
        unpack();
    }
}

std::int64_t VariableReader::read(double* interleaved, std::int64_t count) {
    std::int64_t got = 0;
    while (got < count && position < facts.samples) {
        if (position == blockEnd) {
            fill();
        }
        const std::int64_t taken = std::min(count - got, blockEnd - position);
        std::copy_n(block.data() + (position - blockBegin) * facts.channels, taken * facts.channels,
                    interleaved + got * facts.channels);
        position += taken;
        got += taken;
    }
    return got;
}
