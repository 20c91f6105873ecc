#pragma once

#include "workbench/signals/SignalReader.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>

// Reads samples in memory, in place.
class MemoryReader final : public SignalReader {
public:
    // owner: keeps the samples; null: they outlive the reader.
    MemoryReader(SignalInfo info, const double* interleaved, std::shared_ptr<const void> owner)
        : samples(interleaved), keeper(std::move(owner)) {
        facts = std::move(info);
    }

    std::int64_t read(double* interleaved, std::int64_t count) override {
        const std::int64_t got = std::min(count, facts.samples - position);
        std::copy_n(samples + position * facts.channels, got * facts.channels, interleaved);
        position += got;
        return got;
    }

private:
    const double* samples;
    std::shared_ptr<const void> keeper;
    std::int64_t position = 0;
};
