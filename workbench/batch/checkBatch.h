#pragma once

#include <cstdint>
#include <functional>
#include <string>

// How many results the manifests of a folder tell of, and how many are not as they tell.
struct BatchCheck {
    std::int64_t files = 0, faulty = 0;
};

// Reads every result again. tell: takes name and fault of each that is not as its manifest tells,
// in the order of the names. Failure if the folder has no manifest, or it cannot be read.
BatchCheck checkBatch(
    const std::string& folder, int threads,
    const std::function<void(const std::string& name, const std::string& fault)>& tell);
