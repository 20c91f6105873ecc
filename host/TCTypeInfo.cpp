#include "host/TCTypeInfo.h"

#include "host/BlockStream.h"

int TCTypeInfo::Read(std::istream& stream) {
    const auto* const blocks = dynamic_cast<const BlockStream*>(&stream);
    const BlockHeader header =
        blocks != nullptr ? blocks->nextBlock().value_or(BlockHeader{}) : BlockHeader{};
    blockMarker = header.marker;
    sampleCount = header.count;
    return blockMarker;
}

int TCTypeInfo::GetFillSize(std::istream& stream) const {
    const auto* const blocks = dynamic_cast<const BlockStream*>(&stream);
    return blocks != nullptr ? blocks->waitingBlocks() : 0;
}
