#pragma once

#include "workbench/module/ModuleDriver.h"
#include "workbench/signals/BlockSource.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

class B_BasisModule;
class SignalReader;

// How two signals are cut, filled up and paired.
struct RunPlan {
    std::int64_t blockLength = 0;  // samples in a block; 0: the whole signal is one block
    bool packet = false;           // all blocks of a signal are joined again
    bool pad = false;              // zeros are appended, so that nothing wraps round
    int lag = 0;                   // samples by which the module's result is late
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
// round: L + S - 1 samples, and as many more as the lag. Where the module needs equal lengths, the
// shorter one gets zeros up to that length, too. What a division has beyond its first signal then
// is not delivered.
class ModuleRun {
public:
    // What one channel of one round was made of, and what came out.
    struct Channel {
        std::int64_t round;
        int channel;
        const std::vector<double>& first;   // without padding
        const std::vector<double>& second;  // likewise
        const std::vector<double>& result;
        const std::vector<double>& numbers;  // empty: the module gives none
    };
    struct Listener {
        // Before a channel of a round; false: stop. The run then ends by Stopped.
        std::function<bool(std::int64_t round, int channel)> before;
        std::function<void(const Channel&)> after;
        // Samples of one channel after the other, interleaved, and how many of each channel.
        std::function<void(const double* interleaved, std::int64_t samples)> deliver;
    };
    struct Stopped {
        std::int64_t rounds;  // those that were whole
    };

    // Failure if channels, blocks or lengths do not pair, a block is too long for a module, or the
    // module is not one for two signals.
    ModuleRun(B_BasisModule& module, SignalReader& first, SignalReader& second,
              const RunPlan& plan);

    [[nodiscard]] int channels() const;
    [[nodiscard]] std::int64_t samples() const;  // of each channel of the result
    [[nodiscard]] std::int64_t rounds() const { return roundCount; }
    // Samples of the result of a round, counted from 0, as the module gives it; and of its shorter
    // operand.
    [[nodiscard]] std::int64_t resultLength(std::int64_t round) const;
    [[nodiscard]] std::int64_t shorterLength(std::int64_t round) const;

    [[nodiscard]] const std::vector<ReportedNumbers>& numbers() const { return reported; }
    [[nodiscard]] std::vector<std::string> numberNames() const { return driver.numberNames(); }

    // Failure if the module fails, divides by a kernel that is all zero, or gives something else
    // than a signal of the expected length. Stopped where the listener asks for it.
    void drive(const Listener& listener);

private:
    void checkPairing() const;
    void checkEqualLengths() const;
    void checkSize() const;
    void checkKernels(std::int64_t round) const;
    [[nodiscard]] std::int64_t deliveredLength(std::int64_t round) const;
    std::vector<double> runChannel(std::int64_t round, int channel, const Listener& listener);
    void feed(int port, const BlockSource& source, int channel, std::int64_t padding, bool last);

    RunPlan plan;
    BlockSource first, second;
    std::int64_t roundCount;
    ModuleDriver driver;
    std::vector<ReportedNumbers> reported;
};
