#pragma once

#include "workbench/files/disk/OutputFile.h"
#include "workbench/signals/SignalWriter.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// A signal as an .npy file of version 1: little-endian floats, of one dimension for a single
// channel, else samples by channels in the order of C. Rate, axis, names and notes have no place in
// it.
class NpyWriter final : public SignalWriter {
public:
    // Failure if the target has an encoding of integers, or cannot be written; with finish, also if
    // it would hold a single sample of several channels: a single row is read as one signal.
    NpyWriter(const SignalTarget& target, const ResultInfo& info);

    void write(const double* interleaved, std::int64_t count) override;
    void flush() override;
    void finish(const std::vector<std::string>& closingNotes) override;

private:
    [[nodiscard]] std::string header() const;
    void put(std::string_view given);

    bool narrow;  // values of 32 bits
    std::string name;
    std::int64_t channels, samples = 0;
    OutputFile output;
    FileHandle spool;   // holds the file for an output that cannot be sought in
    std::string bytes;  // on their way to the file
};
