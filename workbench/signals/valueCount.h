#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>

// How many values so many samples of every channel are, as the size of a vector. Throws
// std::bad_alloc where they are more than memory can address.
inline std::size_t valueCount(std::int64_t samples, std::int64_t channels) {
    constexpr std::int64_t most = std::numeric_limits<std::ptrdiff_t>::max() / sizeof(double);
    if (samples > most / channels) {
        throw std::bad_alloc();
    }
    return static_cast<std::size_t>(samples * channels);
}
