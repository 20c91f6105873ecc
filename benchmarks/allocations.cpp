#include "benchmarks/allocations.h"

#include <cstdlib>
#include <new>

static std::size_t bytes = 0;

std::size_t allocatedBytes() {
    return bytes;
}

// The library's other forms call these, those without alignment.
void* operator new(std::size_t size) {
    bytes += size;
    if (void* block = std::malloc(size > 0 ? size : 1)) {
        return block;
    }
    throw std::bad_alloc();
}

void operator delete(void* block) noexcept {
    std::free(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept {
    std::free(block);
}
