#include "tests/support/FailingAllocator.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <limits>
#include <new>

static constexpr std::int64_t never = -1;
// Each thread counts, and fails, for itself.
static thread_local std::int64_t countdown = never;  // allocations until the one that fails
static thread_local bool failed = false;
static thread_local std::int64_t liveBlocks = 0;

void FailingAllocator::arm() const {
    failed = false;
    countdown = index;
}

bool FailingAllocator::disarm() {
    countdown = never;
    return failed;
}

void sweepAllocations(const std::function<void(const FailingAllocator& memory)>& scenario) {
    // Whatever is made once and kept for good is made in this run.
    scenario(FailingAllocator(std::numeric_limits<std::int64_t>::max()));
    std::int64_t index = 0;
    do {
        const std::int64_t before = liveBlocks;
        scenario(FailingAllocator(index));
        ASSERT_EQ(liveBlocks, before) << "after allocation " << index << " failed";
        ++index;
    } while (failed);
    EXPECT_GT(index, 1) << "nothing was allocated";
}

// All forms of new and delete come down to these two.
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    if (countdown-- == 0) {
        failed = true;
        return nullptr;
    }
    void* block = std::malloc(size == 0 ? 1 : size);
    liveBlocks += block != nullptr ? 1 : 0;
    return block;
}
void operator delete(void* block) noexcept {
    liveBlocks -= block != nullptr ? 1 : 0;
    std::free(block);
}

void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
    return operator new(size, tag);
}
void* operator new(std::size_t size) {
    void* block = operator new(size, std::nothrow);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}
void* operator new[](std::size_t size) {
    return operator new(size);
}
void operator delete[](void* block) noexcept {
    operator delete(block);
}
void operator delete(void* block, std::size_t /*size*/) noexcept {
    operator delete(block);
}
void operator delete[](void* block, std::size_t /*size*/) noexcept {
    operator delete(block);
}
void operator delete(void* block, const std::nothrow_t& /*tag*/) noexcept {
    operator delete(block);
}
