#pragma once

#include "workbench/signals/BlockSource.h"

#include <cstdint>
#include <memory>
#include <vector>

class ModuleDriver;
class SignalReader;

// How two signals are cut, filled up and paired.
struct RunPlan {
    std::int64_t blockLength = 0;  // samples in a block; 0: the whole signal is one block
    bool packet = false;           // all blocks of a signal are joined again
    bool pad = false;              // zeros are appended, so that nothing wraps round
    bool equalLengths = false;     // the module refuses signals of different lengths
    bool divides = false;          // a second signal of zeros alone makes no sense
};

// The numbers that a module gives beside its signal.
struct ReportedNumbers {
    std::int64_t round;
    int channel;
    std::vector<double> values;
};

// Runs a module on two signals in rounds, so that per block the memory does not grow with them.
//
// Both signals are cut into blocks. Per block, blocks in the same place make a round; a signal that
// is one block serves every block of the other. Per packet there is one round, with all blocks of
// both. Channels are run one by one; a signal of one channel serves all channels of the other.
//
// With padding the longer operand of each round gets zeros until the two convolve without wrapping
// round: L + S - 1 samples. Where the module needs equal lengths, the shorter one gets zeros up to
// that length, too. What a division has beyond its first signal then is not delivered.
//
// Rounds are read one after the other. Once read, their channels depend on nothing else, and may
// run in several threads.
class ModuleRun {
public:
    // What a module makes of a channel of a round.
    struct Answer {
        std::vector<double> samples;
        std::vector<double> numbers;  // empty: the module gives none
    };
    struct Round {
        std::int64_t number = 0;                          // counted from 0
        std::shared_ptr<const BlockShare> first, second;  // without padding
        std::vector<Answer> answers;                      // one a channel; empty until it has run
    };
    // What one channel of one round was made of, and what came out.
    struct Channel {
        std::int64_t round;
        int channel;
        const std::vector<double>& first;   // without padding
        const std::vector<double>& second;  // likewise
        const std::vector<double>& result;
        const std::vector<double>& numbers;  // empty: the module gives none
    };

    // Failure if channels, blocks or lengths do not pair, or a block is too long for a module.
    ModuleRun(SignalReader& first, SignalReader& second, const RunPlan& plan);

    [[nodiscard]] int channels() const;
    [[nodiscard]] std::int64_t samples() const;  // of each channel of the result
    [[nodiscard]] std::int64_t rounds() const { return roundCount; }
    // Samples of the result of a round, counted from 0, as the module gives it; and of its shorter
    // operand.
    [[nodiscard]] std::int64_t resultLength(std::int64_t round) const;
    [[nodiscard]] std::int64_t shorterLength(std::int64_t round) const;

    // Reads the next round. Failure where a signal ends early, and if a kernel to divide by is all
    // zero.
    Round next();
    // Runs a channel of a round on a module that is idle. Failure if the module fails, or gives
    // something else than a signal of the expected length.
    [[nodiscard]] Answer answer(ModuleDriver& driver, const Round& round, int channel) const;

    // Of a round whose channels have all run.
    [[nodiscard]] static Channel channelOf(const Round& round, int channel);
    // The samples that are delivered of it, interleaved.
    [[nodiscard]] std::vector<double> delivered(const Round& round) const;

private:
    void checkPairing() const;
    void checkEqualLengths() const;
    void checkSize() const;
    void checkKernels(const Round& round) const;
    [[nodiscard]] std::int64_t deliveredLength(std::int64_t round) const;
    void feed(ModuleDriver& driver, int port, const std::vector<double>& share,
              std::int64_t blockLength, std::int64_t padding, bool last) const;

    RunPlan plan;
    BlockSource first, second;
    std::int64_t roundCount;
    std::int64_t position = 0;  // round that is read next
};
