#pragma once

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string_view>

// The chunks that a WAV, RF64, W64 or AIFF file consists of, one after the other.
class ChunkReader {
public:
    // The file stays the caller's. Its position is lost.
    explicit ChunkReader(std::FILE* audio);

    // Moves on to the next chunk; false after the last, in other files, and after a damaged head.
    bool next();

    // The first four bytes of its id.
    [[nodiscard]] std::string_view id() const { return {idBytes, 4}; }
    // Where its contents begin in the file.
    [[nodiscard]] std::int64_t position() const { return contents; }
    // Of its contents, as its head has it; nothing where the head leaves it open.
    [[nodiscard]] std::optional<std::int64_t> size() const;
    // From position to the end of the file.
    [[nodiscard]] std::int64_t bytesLeft() const { return fileEnd - contents; }

private:
    struct Layout;
    static const Layout* layoutOf(std::FILE* audio);

    std::FILE* file;
    const Layout* layout;  // null: not a file of chunks
    char idBytes[4] = {};
    std::int64_t fileEnd = 0, nextChunk = 0, contents = 0, declared = 0;
};

// The unsigned number of that many bytes at the file's position; nothing at its end, or beyond 63
// bits.
std::optional<std::int64_t> readNumber(std::FILE* file, int length, bool bigEndian);
