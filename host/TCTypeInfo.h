#pragma once

#include <istream>

// What the next block of an input is. The stream is a BlockStream; any other carries no blocks.
class TCTypeInfo {
public:
    // Fills the object from the next block, which stays where it is, and returns its marker; 0 and
    // all fields 0 if none waits.
    int Read(std::istream& stream);

    // Blocks that wait on the stream.
    int GetFillSize(std::istream& stream) const;

    int blockMarker = 0;  // 2: the last block
    int sampleCount = 0;
};
