#pragma once

#include <cstddef>
#include <memory>
#include <string>

// SHA-256 (NIST, FIPS 180-4, Secure Hash Standard, 2015) over samples as little-endian 64-bit IEEE
// numbers: two runs gave the same result if, and only if, their digests are the same.
class SampleDigest {
public:
    SampleDigest();
    SampleDigest(const SampleDigest&) = delete;
    SampleDigest& operator=(const SampleDigest&) = delete;
    ~SampleDigest();

    // The next samples, in the order of the file; in blocks of any length.
    void add(const double* samples, std::size_t count);

    // 64 lower-case hexadecimal digits over all that was added so far.
    std::string hex() const;

private:
    struct State;
    std::unique_ptr<State> state;
};
