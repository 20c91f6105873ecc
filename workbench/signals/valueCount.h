#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>

// The number of values in so many samples of every channel, as the size of a vector. Throws
// std::bad_alloc if memory cannot address them.
inline std::size_t valueCount(std::int64_t samples, std::int64_t channels) {
    constexpr std::int64_t most = std::numeric_limits<std::ptrdiff_t>::max() / sizeof(double);
    if (samples > most / channels) {
        throw std::bad_alloc();
    }
    return static_cast<std::size_t>(samples * channels);
}
