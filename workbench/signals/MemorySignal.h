#pragma once

#include "workbench/signals/SignalReader.h"

#include <cstdint>
#include <vector>

// A signal in memory, to be read like a file, more than once.
class MemorySignal final : public SignalReader {
public:
    // The whole of another signal.
    explicit MemorySignal(SignalReader& source);
    // Samples of each channel, interleaved, with the facts of a signal that they belong to.
    MemorySignal(const SignalInfo& info, std::vector<double> interleaved);

    std::int64_t read(double* interleaved, std::int64_t count) override;
    void rewind() { position = 0; }

    // Appends zeros up to a number of samples in each channel.
    void pad(std::int64_t samples);

    [[nodiscard]] const std::vector<double>& interleaved() const { return values; }

private:
    std::vector<double> values;
    std::int64_t position = 0;
};
