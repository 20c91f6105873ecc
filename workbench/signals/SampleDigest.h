#pragma once

#include "workbench/system/Sha256.h"

#include <cstddef>
#include <string>

// SHA-256 over samples as little-endian 64-bit IEEE numbers: two runs gave the same result if, and
// only if, their digests are the same.
class SampleDigest {
public:
    // The next samples, in the order of the file; in blocks of any length.
    void add(const double* samples, std::size_t count);

    // 64 lower-case hexadecimal digits over all that was added so far.
    [[nodiscard]] std::string hex() const { return hash.hex(); }

private:
    Sha256 hash;
};
