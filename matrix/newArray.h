#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>

// An array of count elements without values; null if memory is exhausted, and likewise if count is
// negative or its bytes are beyond what an array can have.
template <typename T>
std::unique_ptr<T[]> newArray(std::int64_t count) {
    constexpr std::int64_t limit = std::numeric_limits<std::ptrdiff_t>::max() / sizeof(T);
    if (count < 0 || count > limit) {
        return nullptr;
    }
    return std::unique_ptr<T[]>(new (std::nothrow) T[static_cast<std::size_t>(count)]);
}
