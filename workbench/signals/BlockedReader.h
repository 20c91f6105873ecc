#pragma once

#include "workbench/signals/SignalReader.h"

#include <vector>

// A reader that takes its samples from the file in blocks of its own, in constant memory.
class BlockedReader : public SignalReader {
public:
    std::int64_t read(double* interleaved, std::int64_t count) final;

protected:
    // Reads count samples of every channel, interleaved, from the sample of the number first on:
    // block by block from the beginning to the end, as long as restart is not called. Failure as
    // read.
    virtual void fill(std::int64_t first, std::int64_t count, double* to) = 0;

    // Reads all samples once, so that any fault is found; NaN and infinity are faults unless they
    // are allowed. The first sample is next.
    void readThrough(bool allowNonfinite);

    // Puts the first sample next.
    void restart();

private:
    void fillBlock();

    std::vector<double> block;  // samples that were read, from blockBegin to blockEnd
    std::int64_t position = 0;  // of the sample that is asked for next
    std::int64_t blockBegin = 0, blockEnd = 0;
};
