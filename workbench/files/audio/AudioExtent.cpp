#include "workbench/files/audio/AudioExtent.h"

#include "workbench/files/disk/FileStream.h"

#include <algorithm>
#include <array>
#include <string_view>

// The chunk formats differ in the width and byte order of a chunk's size, in whether the size
// counts the chunk's own head, and in what a chunk's end is rounded up to.
struct ChunkFormat {
    std::string_view magic;  // first four bytes of the file
    std::int64_t firstChunk;
    std::int64_t idLength;
    int sizeLength;
    bool bigEndian;
    bool sizeCountsHead;
    std::int64_t alignment;
};

static constexpr std::array chunkFormats = {
    ChunkFormat{"RIFF", 12, 4, 4, false, false, 2}, ChunkFormat{"RIFX", 12, 4, 4, true, false, 2},
    ChunkFormat{"RF64", 12, 4, 4, false, false, 2}, ChunkFormat{"FORM", 12, 4, 4, true, false, 2},
    ChunkFormat{"riff", 40, 16, 8, false, true, 8}};

static constexpr std::int64_t openLength = 0xffffffff;  // what a stream's header says

// Reads an unsigned number at the file's position; nothing at the end, or beyond 63 bits.
static std::optional<std::int64_t> readNumber(std::FILE* file, int length, bool bigEndian) {
    std::array<unsigned char, 8> bytes = {};
    if (std::fread(bytes.data(), 1, static_cast<std::size_t>(length), file) !=
        static_cast<std::size_t>(length)) {
        return std::nullopt;
    }
    if (!bigEndian) {
        std::reverse(bytes.begin(), bytes.begin() + length);
    }
    std::uint64_t number = 0;
    for (int i = 0; i < length; ++i) {
        number = number << 8U | bytes[static_cast<std::size_t>(i)];
    }
    if (number > INT64_MAX / 2) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(number);
}

static std::optional<AudioExtent> walkChunks(std::FILE* file, const ChunkFormat& format) {
    seekFile(file, 0, SEEK_END);
    const std::int64_t end = filePosition(file);
    const std::int64_t headLength = format.idLength + format.sizeLength;
    std::optional<std::int64_t> longSize;  // RF64 keeps the size of its samples apart
    std::int64_t start = format.firstChunk;
    while (start < end && seekFile(file, start, SEEK_SET)) {
        std::array<char, 16> id = {};
        const auto idLength = static_cast<std::size_t>(format.idLength);
        const std::size_t got = std::fread(id.data(), 1, idLength, file);
        std::optional<std::int64_t> size = readNumber(file, format.sizeLength, format.bigEndian);
        const std::int64_t headPart = format.sizeCountsHead ? headLength : 0;
        if (got < idLength || !size || *size < headPart) {
            return std::nullopt;
        }
        const std::string_view name(id.data(), 4);
        if (name == "ds64") {
            seekFile(file, 8, SEEK_CUR);
            longSize = readNumber(file, 8, false);
        }
        if (name == "data" || name == "SSND") {
            const bool open = format.sizeLength == 4 && *size == openLength;
            if (open && !longSize) {
                return std::nullopt;
            }
            const std::int64_t promised = open ? *longSize : *size - headPart;
            return AudioExtent{promised, end - start - headLength};
        }
        start += headLength - headPart + *size;
        start += (format.alignment - start % format.alignment) % format.alignment;
    }
    return std::nullopt;
}

std::optional<AudioExtent> findAudioExtent(std::FILE* file) {
    std::array<char, 4> magic = {};
    seekFile(file, 0, SEEK_SET);
    const std::size_t got = std::fread(magic.data(), 1, magic.size(), file);
    for (const ChunkFormat& format : chunkFormats) {
        if (std::string_view(magic.data(), got) == format.magic) {
            return walkChunks(file, format);
        }
    }
    return std::nullopt;
}
