#pragma once

#include <cstdint>
#include <vector>

// Linear convolution of a signal of any length with a kernel of m taps, block by block:
//     c[i] = sum_k h[k] x[i - k]      i = 0 .. n + m - 2
// What a block gives depends on it and on the samples before it alone, so that blocks are convolved
// side by side, in any order; whoever has them adds up, in ascending order, where they overlap.
class BlockConvolution {
public:
    static constexpr std::int64_t mostTaps = std::int64_t{1} << 29;

    // What an implementation works with: the length of its blocks, and memory in bytes, as long as
    // it is there and for each block under way.
    struct Demand {
        std::int64_t block;
        double kept, perBlock;
    };

    virtual ~BlockConvolution() = default;

    // L, samples in a block. The last block of a signal may have fewer.
    [[nodiscard]] virtual std::int64_t block() const = 0;

    // Samples before a block that it is convolved with: 0, or m - 1 where blocks do not overlap.
    [[nodiscard]] virtual std::int64_t history() const = 0;

    // Once, before any block: the length of the first one, the longest of all.
    virtual void prepare(std::int64_t firstBlock) = 0;

    // What a block of count samples adds to the result from its first sample on: count + m - 1 -
    // history() samples. window: the history, and the block after it. From any thread.
    [[nodiscard]] virtual std::vector<double> convolve(const double* window,
                                                       std::int64_t count) const = 0;
};
