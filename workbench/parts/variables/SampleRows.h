#pragma once

#include <cstddef>
#include <cstdint>

// The samples of a variable by rows, one of every channel each, which can be read in any order.
class SampleRows {
public:
    virtual ~SampleRows() = default;

    // Rows first to first + count - 1, interleaved, as doubles. Returns the index in `to` of the
    // first value that a double does not hold, an integer beyond 2^53; of all, if they all fit.
    // Failure if they cannot be read.
    virtual std::size_t read(std::int64_t first, std::int64_t count, double* to) = 0;
};
