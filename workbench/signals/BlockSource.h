#pragma once

#include "workbench/signals/SignalReader.h"

#include <cstdint>
#include <memory>
#include <vector>

// What a signal has in a round, its channels side by side.
struct BlockShare {
    std::vector<std::vector<double>> channels;

    // A signal of one channel has it for all.
    [[nodiscard]] const std::vector<double>& of(int channel) const;
};

// A signal cut into blocks. The share of a round is a block, or in a packet all of them; it is in
// memory as long as somebody has it.
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

    // The share of the next round. Failure if the signal ends before it.
    std::shared_ptr<const BlockShare> next();
    // Samples in a block of the share; only the last block may be shorter.
    [[nodiscard]] std::int64_t blockLength() const { return block; }

private:
    [[nodiscard]] BlockShare read(std::int64_t samples);

    SignalReader& reader;
    std::int64_t block, shareLength, roundCount;
    std::int64_t position = 0;                    // round that is read next
    std::shared_ptr<const BlockShare> onlyShare;  // once it is read, where there is one alone
};
