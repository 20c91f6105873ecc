#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct BatchItem;

// A part of a batch: which files it has follows from their names alone, so that several machines
// agree on it whatever else is in the folders.
struct Shard {
    std::int64_t index = 1, count = 1;  // index from 1

    // Which of count parts has a name, from 1: by the first 64 bits of its SHA-256, modulo count.
    static std::int64_t indexOf(const std::string& name, std::int64_t count);
    [[nodiscard]] bool has(const std::string& name) const;
    // Those of some items that it has.
    [[nodiscard]] std::vector<const BatchItem*> select(const std::vector<BatchItem>& items) const;
    // "batch.jsonl", or "batch-2-of-8.jsonl"
    [[nodiscard]] std::string manifestName() const;
};
