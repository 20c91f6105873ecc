#include "workbench/signals/SampleDigest.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>

void SampleDigest::add(const double* samples, std::size_t count) {
    std::array<std::uint8_t, 4096> bytes = {};
    while (count > 0) {
        const std::size_t length = std::min(count, bytes.size() / 8);
        for (std::size_t i = 0; i < 8 * length; ++i) {
            const auto bits = std::bit_cast<std::uint64_t>(samples[i / 8]);
            bytes[i] = static_cast<std::uint8_t>(bits >> 8 * (i % 8));
        }
        hash.add(bytes.data(), 8 * length);
        samples += length;
        count -= length;
    }
}
