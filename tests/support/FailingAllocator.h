#pragma once

#include <cstdint>
#include <functional>

// Exhausted memory, where a test wants it. A test program that contains FailingAllocator.cpp has
// its operators new and delete replaced: they count what lives, and one allocation can be made to
// fail. Each thread counts for itself.
class FailingAllocator {
public:
    explicit FailingAllocator(std::int64_t failingOne) : index(failingOne) {}

    // From here on the allocation of that index, counted from 0, fails, and no other.
    void arm() const;
    // Ends that, and tells whether it has failed. What the test itself allocates is safe again.
    static bool disarm();

private:
    std::int64_t index;
};

// Runs scenario once with all memory it wants and then again and again, with the first allocation
// failing, the second and so on, until one run gets by without its failure. After each run as many
// blocks live as before it. The scenario arms memory just before the operation under test and
// disarms it right after; everything that it makes ends with it.
void sweepAllocations(const std::function<void(const FailingAllocator& memory)>& scenario);
