#pragma once

#include "host/BlockBuffer.h"

#include <cstdint>
#include <iostream>
#include <optional>
#include <vector>

// What stands before the samples of a block.
struct BlockHeader {
    // Markers of a signal that comes in several blocks. Any other number is a marker, too.
    static constexpr std::int32_t moreFollow = 1;
    static constexpr std::int32_t last = 2;

    std::int32_t marker;  // travels with the block
    std::int32_t count;   // samples
};

// The stream between two ports: blocks of samples, first in, first out. It is an ordinary stream of
// bytes; a block is, little-endian,
//     int32 marker, int32 count, count doubles.
// The operations below work on whole blocks and ignore the state flags of the stream. Where the
// bytes that come next are not a whole block (a negative count, fewer bytes than the count says),
// no block waits.
class BlockStream : public std::iostream {
public:
    BlockStream();

    // Appends a block. A negative count appends nothing. Memory that runs out leaves by
    // std::bad_alloc, with the stream as it was.
    void writeBlock(int marker, const double* samples, int count);

    // Makes room for a block of count samples, so that the next writeBlock of that size cannot
    // fail. Memory that runs out leaves by std::bad_alloc, with the stream as it was.
    void reserveBlock(int count);

    // Takes the next block. false: none waits, and the arguments are as they were. Memory that runs
    // out leaves by std::bad_alloc, with the stream and the arguments as they were.
    bool readBlock(int& marker, std::vector<double>& samples);

    // The next block without taking it, empty if none waits.
    std::optional<BlockHeader> nextBlock() const;

    // Takes the block that nextBlock has shown; samples has room for its count.
    void takeBlock(double* samples);

    // Removes the next block unread; nothing happens where none waits.
    void discardBlock();

    // Number of whole blocks that wait. Walks over them, in time proportional to that number.
    int waitingBlocks() const;

    // Removes everything that waits, bytes that are not a block included.
    void discardAll();

private:
    std::optional<BlockHeader> blockAt(std::uint64_t offset) const;

    BlockBuffer buffer;
};
