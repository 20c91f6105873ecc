#include "workbench/files/audio/AudioExtent.h"

#include "workbench/files/audio/ChunkReader.h"
#include "workbench/system/FileHandle.h"

std::optional<AudioExtent> findAudioExtent(std::FILE* file) {
    ChunkReader chunks(file);
    std::optional<std::int64_t> longSize;  // RF64 keeps the size of its samples apart
    while (chunks.next()) {
        if (chunks.id() == "ds64" && seekFile(file, chunks.position() + 8, SEEK_SET)) {
            longSize = readNumber(file, 8, false);
        }
        if (chunks.id() == "data" || chunks.id() == "SSND") {
            const std::optional<std::int64_t> size = chunks.size() ? chunks.size() : longSize;
            return size ? std::optional(AudioExtent{*size, chunks.bytesLeft()}) : std::nullopt;
        }
    }
    return std::nullopt;
}
