#pragma once

#include "workbench/signals/SignalReader.h"

#include <cstdint>
#include <vector>

// A signal cut into blocks, its channels side by side. The share of one round is in memory at a
// time: a block, or in a packet all of them.
class BlockSource {
public:
    // blockLength 0: the whole signal is one block. Failure if a share is longer than a module
    // takes.
    BlockSource(SignalReader& reader, std::int64_t blockLength, bool packet);

    [[nodiscard]] const SignalInfo& info() const { return reader.info(); }
    [[nodiscard]] int channels() const;
    [[nodiscard]] std::int64_t rounds() const { return roundCount; }
    // Samples of the share of a round, counted from 0. The only share serves every round.
    [[nodiscard]] std::int64_t length(std::int64_t round) const;

    // Brings the share of the next round into memory.
    void advance();
    // The share of a channel; a signal of one channel has it for all.
    [[nodiscard]] const std::vector<double>& share(int channel) const;
    // Samples in a block of the share; only the last block may be shorter.
    [[nodiscard]] std::int64_t blockLength() const { return block; }

private:
    SignalReader& reader;
    std::int64_t block, shareLength, roundCount;
    std::int64_t position = 0;  // round that advance reads next
    std::vector<std::vector<double>> shares;
};
