#include "workbench/signals/SampleDigest.h"

#include <array>
#include <bit>
#include <cstdint>

// A processor that stores the lowest byte first has the samples in memory as they are digested.
void SampleDigest::add(const double* samples, std::size_t count) {
    if constexpr (std::endian::native == std::endian::little) {
        hash.add(reinterpret_cast<const std::uint8_t*>(samples), 8 * count);
    } else {
        std::array<std::uint8_t, 8> bytes = {};
        for (const double* sample = samples; sample != samples + count; ++sample) {
            const auto bits = std::bit_cast<std::uint64_t>(*sample);
            for (std::size_t i = 0; i < bytes.size(); ++i) {
                bytes[i] = static_cast<std::uint8_t>(bits >> 8 * i);
            }
            hash.add(bytes.data(), bytes.size());
        }
    }
}
