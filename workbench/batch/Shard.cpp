#include "workbench/batch/Shard.h"

#include "workbench/batch/signalList.h"
#include "workbench/system/Sha256.h"

#include <fmt/format.h>

std::int64_t Shard::indexOf(const std::string& name, std::int64_t count) {
    Sha256 hash;
    hash.add(reinterpret_cast<const std::uint8_t*>(name.data()), name.size());
    constexpr std::size_t digits = 16;
    const std::uint64_t number = std::stoull(hash.hex().substr(0, digits), nullptr, 16);
    return static_cast<std::int64_t>(number % static_cast<std::uint64_t>(count)) + 1;
}

bool Shard::has(const std::string& name) const {
    return indexOf(name, count) == index;
}

std::vector<const BatchItem*> Shard::select(const std::vector<BatchItem>& items) const {
    std::vector<const BatchItem*> own;
    for (const BatchItem& item : items) {
        if (count == 1 || has(item.name)) {
            own.push_back(&item);
        }
    }
    return own;
}

std::string Shard::manifestName() const {
    return count == 1 ? "batch.jsonl" : fmt::format("batch-{}-of-{}.jsonl", index, count);
}
