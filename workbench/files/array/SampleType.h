#pragma once

#include <cstddef>
#include <cstdint>

// How the values of an array become samples: every type up to 64 bits gives the double that is its
// value, exactly, except for integers beyond 2^53, which are rounded.
struct SampleType {
    void (*decode)(const std::uint8_t* bytes, std::size_t count, double* samples);

    // The index of the first integer whose magnitude is above 2^53; count if there is none.
    std::size_t (*firstWide)(const std::uint8_t* bytes, std::size_t count);

    // Of a kind (b, i, u, f) with values of so many bytes, in either order. Null if there is none.
    static const SampleType* of(char kind, int bytes, bool bigEndian);
};
