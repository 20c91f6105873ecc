#pragma once

#include <cstdint>
#include <cstdio>
#include <optional>

// How many bytes of samples a WAV, RF64, W64 or AIFF file holds.
struct AudioExtent {
    std::int64_t declared = 0;  // by the header
    std::int64_t present = 0;   // in the file after it
};

// Finds the chunk of samples by its header. The audio library takes a truncated file for a shorter
// one, so this is how the loss is detected. Nothing if there is no such chunk or the header leaves
// its length open. The file's position is lost.
std::optional<AudioExtent> findAudioExtent(std::FILE* file);
