#include "host/BlockStream.h"

#include <bit>
#include <limits>

// Blocks go over the wire in the form that they have in memory.
static_assert(std::endian::native == std::endian::little);
static_assert(sizeof(BlockHeader) == 8 && sizeof(double) == 8);

static std::uint64_t blockSize(int count) {
    return sizeof(BlockHeader) + sizeof(double) * static_cast<std::uint64_t>(count);
}

BlockStream::BlockStream() : std::iostream(nullptr) {
    rdbuf(&buffer);
}

void BlockStream::reserveBlock(int count) {
    if (count >= 0) {
        buffer.reserve(blockSize(count));
    }
}

void BlockStream::writeBlock(int marker, const double* samples, int count) {
    if (count < 0) {
        return;
    }
    reserveBlock(count);
    const BlockHeader header{marker, count};
    buffer.append(&header, sizeof header);
    buffer.append(samples, sizeof(double) * static_cast<std::uint64_t>(count));
}

bool BlockStream::readBlock(int& marker, std::vector<double>& samples) {
    const std::optional<BlockHeader> header = nextBlock();
    if (!header) {
        return false;
    }
    samples.resize(static_cast<std::size_t>(header->count));
    takeBlock(samples.data());
    marker = header->marker;
    return true;
}

std::optional<BlockHeader> BlockStream::blockAt(std::uint64_t offset) const {
    const std::uint64_t waiting = buffer.size() - offset;
    BlockHeader header{};
    if (waiting < sizeof header) {
        return std::nullopt;
    }
    buffer.copy(offset, &header, sizeof header);
    if (header.count < 0 || waiting < blockSize(header.count)) {
        return std::nullopt;
    }
    return header;
}

std::optional<BlockHeader> BlockStream::nextBlock() const {
    return blockAt(0);
}

void BlockStream::takeBlock(double* samples) {
    const std::optional<BlockHeader> header = nextBlock();
    if (header) {
        buffer.copy(sizeof *header, samples, blockSize(header->count) - sizeof *header);
        discardBlock();
    }
}

void BlockStream::discardBlock() {
    const std::optional<BlockHeader> header = nextBlock();
    if (header) {
        buffer.drop(blockSize(header->count));
    }
}

int BlockStream::waitingBlocks() const {
    int blocks = 0;
    std::uint64_t offset = 0;
    std::optional<BlockHeader> header = blockAt(offset);
    while (header && blocks < std::numeric_limits<int>::max()) {
        ++blocks;
        offset += blockSize(header->count);
        header = blockAt(offset);
    }
    return blocks;
}

void BlockStream::discardAll() {
    buffer.drop(buffer.size());
}
