#pragma once

#include "host/BlockStream.h"
#include "workbench/methods/FendraSettings.h"
#include "workbench/signals/BlockSource.h"

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

class B_BasisModule;

// How two signals are cut and paired.
struct RunPlan {
    FendraSettings settings;
    std::int64_t blockLength = 0;  // samples in a block; 0: the whole signal is one block
    bool pad = false;              // zeros appended, see ModuleRun
};

// What the iteration and the filter report beside their result.
struct ReportedNumbers {
    std::int64_t round;
    int channel;
    std::array<double, 2> values;
};

// Runs a module on two signals: feeds its inputs, drives it and drains its first output, in rounds,
// so that per block the memory does not grow with the signals.
//
// Both signals are cut into blocks. Per block, blocks in the same place make a round; a signal that
// is one block serves every block of the other. Per packet there is one round, with all blocks of
// both. Channels are run one by one; a signal of one channel serves all channels of the other.
//
// With pad, the longer operand of each round gets zeros until the two convolve without wrapping
// round: L + S - 1 samples, and one more in the time domain, whose result comes one sample late.
// For the iteration and the filter, which ask for equal lengths, the shorter one gets zeros
// instead.
class ModuleRun {
public:
    // samples of one channel behind the other, interleaved, and how many of each channel
    using Deliver = std::function<void(const double* interleaved, std::int64_t samples)>;
    using Progress = std::function<void(std::int64_t done, std::int64_t rounds)>;

    // Failure if channels, blocks or lengths do not pair, a block is too long for a module, or the
    // filter's matrix is larger than the memory that is free.
    ModuleRun(B_BasisModule& driven, SignalReader& first, SignalReader& second,
              const RunPlan& plan);
    ModuleRun(const ModuleRun&) = delete;
    ModuleRun& operator=(const ModuleRun&) = delete;
    ~ModuleRun();

    [[nodiscard]] int channels() const;
    [[nodiscard]] std::int64_t samples() const;  // of each channel of the result
    [[nodiscard]] std::int64_t rounds() const { return roundCount; }

    // Multiply-adds of the whole run, where it takes the square of the lengths or more; else 0.
    [[nodiscard]] double work() const;

    // Names of the two numbers, as the module gives them, and the numbers so far.
    [[nodiscard]] std::array<std::string, 2> numberNames() const;
    [[nodiscard]] const std::vector<ReportedNumbers>& numbers() const { return reported; }

    // Failure if the module fails, a kernel is all zero, or gives something else than a signal of
    // the expected length.
    void drive(const Deliver& deliver, const Progress& progress);

private:
    void checkPairing() const;
    void checkSize() const;
    void checkKernel(std::int64_t round) const;
    [[nodiscard]] std::int64_t resultLength(std::int64_t round) const;
    std::vector<double> runChannel(std::int64_t round, int channel);
    void feed(int port, const BlockSource& source, int channel, std::int64_t padding, bool last);
    void step(std::int64_t round);
    void takeNumbers(std::int64_t round, int channel);

    B_BasisModule& module;
    RunPlan plan;
    BlockSource first, second;
    std::int64_t roundCount;
    std::array<BlockStream, 2> inputs;
    BlockStream output;
    std::array<BlockStream, 2> numberOutputs;
    std::vector<ReportedNumbers> reported;
};
