#include "workbench/jobs/SignalRange.h"

#include "workbench/signals/SignalReader.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

std::vector<ChannelRange> rangesOf(SignalReader& reader) {
    std::vector<ChannelRange> all(static_cast<std::size_t>(reader.info().channels));
    const std::int64_t pieceLength = std::max<std::int64_t>(1, 65536 / reader.info().channels);
    std::vector<double> piece(static_cast<std::size_t>(pieceLength) * all.size());
    while (const std::int64_t got = reader.read(piece.data(), pieceLength)) {
        for (std::size_t i = 0; i < static_cast<std::size_t>(got) * all.size(); ++i) {
            ChannelRange& range = all[i % all.size()];
            if (std::isfinite(piece[i])) {
                range.smallest = std::min(range.smallest, piece[i]);
                range.largest = std::max(range.largest, piece[i]);
            } else {
                ++range.nonfinite;
            }
        }
    }
    return all;
}
