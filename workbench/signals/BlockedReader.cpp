#include "workbench/signals/BlockedReader.h"

#include "workbench/signals/requireFinite.h"

#include <algorithm>

void BlockedReader::fillBlock() {
    constexpr std::int64_t most = 1 << 15;  // values, unless a sample has more
    const std::int64_t length =
        std::min(std::max<std::int64_t>(1, most / facts.channels), facts.samples - position);
    block.resize(static_cast<std::size_t>(length * facts.channels));
    fill(position, length, block.data());
    blockBegin = position;
    blockEnd = position + length;
}

std::int64_t BlockedReader::read(double* interleaved, std::int64_t count) {
    std::int64_t got = 0;
    while (got < count && position < facts.samples) {
        if (position == blockEnd) {
            fillBlock();
        }
        const std::int64_t taken = std::min(count - got, blockEnd - position);
        std::copy_n(block.data() + (position - blockBegin) * facts.channels, taken * facts.channels,
                    interleaved + got * facts.channels);
        position += taken;
        got += taken;
    }
    return got;
}

void BlockedReader::readThrough(bool allowNonfinite) {
    for (restart(); position < facts.samples; position = blockEnd) {
        fillBlock();
        if (!allowNonfinite) {
            requireFinite(facts, blockBegin, block.data(), blockEnd - blockBegin);
        }
    }
    restart();
}

void BlockedReader::restart() {
    position = blockBegin = blockEnd = 0;
}
