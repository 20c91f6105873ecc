#include "workbench/files/audio/ChunkReader.h"

#include "workbench/system/FileHandle.h"

#include <algorithm>
#include <array>
#include <cstring>

static constexpr std::int64_t openLength = 0xffffffff;  // what a stream's header says

// The formats differ in the width and byte order of a chunk's size, in whether the size counts the
// chunk's own head, and in what a chunk's end is rounded up to.
struct ChunkReader::Layout {
    std::string_view magic;  // first four bytes of the file
    std::int64_t firstChunk;
    int idLength, sizeLength;
    bool bigEndian, sizeCountsHead;
    std::int64_t alignment;

    [[nodiscard]] std::int64_t headLength() const { return idLength + sizeLength; }
};

const ChunkReader::Layout* ChunkReader::layoutOf(std::FILE* audio) {
    static constexpr std::array layouts = {
        Layout{"RIFF", 12, 4, 4, false, false, 2}, Layout{"RIFX", 12, 4, 4, true, false, 2},
        Layout{"RF64", 12, 4, 4, false, false, 2}, Layout{"FORM", 12, 4, 4, true, false, 2},
        Layout{"riff", 40, 16, 8, false, true, 8}};
    std::array<char, 4> magic = {};
    seekFile(audio, 0, SEEK_SET);
    const std::size_t got = std::fread(magic.data(), 1, magic.size(), audio);
    const auto* const layout = std::find_if(
        layouts.begin(), layouts.end(),
        [&](const Layout& each) { return each.magic == std::string_view(magic.data(), got); });
    return layout == layouts.end() ? nullptr : layout;
}

ChunkReader::ChunkReader(std::FILE* audio) : file(audio), layout(layoutOf(audio)) {
    if (layout != nullptr) {
        seekFile(file, 0, SEEK_END);
        fileEnd = filePosition(file);
        nextChunk = layout->firstChunk;
    }
}

std::optional<std::int64_t> readNumber(std::FILE* file, int length, bool bigEndian) {
    std::array<unsigned char, 8> bytes = {};
    if (std::fread(bytes.data(), 1, static_cast<std::size_t>(length), file) !=
        static_cast<std::size_t>(length)) {
        return std::nullopt;
    }
    std::uint64_t number = 0;
    for (int i = 0; i < length; ++i) {
        const int place = bigEndian ? i : length - 1 - i;
        number = number << 8U | bytes[static_cast<std::size_t>(place)];
    }
    if (number > INT64_MAX / 2) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(number);
}

bool ChunkReader::next() {
    if (layout == nullptr || nextChunk >= fileEnd || !seekFile(file, nextChunk, SEEK_SET)) {
        return false;
    }
    std::array<char, 16> bytes = {};
    const auto idLength = static_cast<std::size_t>(layout->idLength);
    const std::size_t got = std::fread(bytes.data(), 1, idLength, file);
    const std::optional<std::int64_t> size =
        readNumber(file, layout->sizeLength, layout->bigEndian);
    const std::int64_t headPart = layout->sizeCountsHead ? layout->headLength() : 0;
    if (got < idLength || !size || *size < headPart) {
        layout = nullptr;
        return false;
    }
    std::memcpy(idBytes, bytes.data(), sizeof idBytes);
    declared = *size - headPart;
    contents = nextChunk + layout->headLength();
    const std::int64_t end = contents + declared;
    nextChunk = end + (layout->alignment - end % layout->alignment) % layout->alignment;
    return true;
}

std::optional<std::int64_t> ChunkReader::size() const {
    const bool open = layout->sizeLength == 4 && declared == openLength;
    return open ? std::nullopt : std::optional(declared);
}
