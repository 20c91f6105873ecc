#include "workbench/batch/Shard.h"

#include "workbench/batch/signalList.h"

#include <fmt/format.h>

bool Shard::has(const std::string& name) const {
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const char letter : name) {
        hash = (hash ^ static_cast<unsigned char>(letter)) * 0x100000001b3;
    }
    return hash % static_cast<std::uint64_t>(count) == static_cast<std::uint64_t>(index - 1);
}

void Shard::select(std::vector<BatchItem>& items) const {
    std::erase_if(items, [this](const BatchItem& item) { return !has(item.name); });
}

std::string Shard::manifestName() const {
    return count == 1 ? "batch.jsonl" : fmt::format("batch-{}-of-{}.jsonl", index, count);
}
