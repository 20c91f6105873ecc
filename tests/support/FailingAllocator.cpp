#include "tests/support/FailingAllocator.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <limits>
#include <new>

static constexpr std::int64_t never = -1;
static std::int64_t countdown = never;  // allocations until the one that fails
static bool failed = false;
static std::int64_t liveBlocks = 0;

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

static void* allocate(std::size_t size) noexcept {
    if (countdown == 0) {
        failed = true;
        countdown = never;
        return nullptr;
    }
    countdown -= countdown > 0 ? 1 : 0;
    void* block = std::malloc(size == 0 ? 1 : size);
    liveBlocks += block != nullptr ? 1 : 0;
    return block;
}

static void* allocateOrThrow(std::size_t size) {
    void* block = allocate(size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

static void release(void* block) noexcept {
    liveBlocks -= block != nullptr ? 1 : 0;
    std::free(block);
}

void* operator new(std::size_t size) {
    return allocateOrThrow(size);
}
void* operator new[](std::size_t size) {
    return allocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return allocate(size);
}
void operator delete(void* block) noexcept {
    release(block);
}
void operator delete[](void* block) noexcept {
    release(block);
}
void operator delete(void* block, std::size_t /*size*/) noexcept {
    release(block);
}
void operator delete[](void* block, std::size_t /*size*/) noexcept {
    release(block);
}
void operator delete(void* block, const std::nothrow_t& /*tag*/) noexcept {
    release(block);
}
void operator delete[](void* block, const std::nothrow_t& /*tag*/) noexcept {
    release(block);
}
