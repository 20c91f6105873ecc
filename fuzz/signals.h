#pragma once

#include "workbench/files/signalFiles.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Bytes as a file without a disk, as long as the object lasts.
class MemoryFile {
public:
    explicit MemoryFile(std::string_view bytes);
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile();

    std::string path() const;

private:
    int descriptor;
};

// A refusal is one line that can be shown.
void requireShowable(const std::string& refusal);

// All samples of an open signal, interleaved. Its facts are required to make sense.
std::vector<double> samplesOf(SignalReader& reader, bool allowNonfinite);

struct ReadSignal {
    SignalInfo info;
    std::vector<double> samples;
};

// A signal of a file, read where NaN, infinity and rounded integers are let through. What is read
// where they are not is required to be the same, and each refusal to be one. Nothing if the file is
// refused, or too long to be written again.
std::optional<ReadSignal> readBothWays(const std::string& path, const std::string& part = "");

// Writes a signal in the format of that ending and opens it again.
std::unique_ptr<SignalReader> writtenAndOpened(const std::string& ending,
                                               const std::vector<double>& samples,
                                               const ResultInfo& info, const ReadOptions& options);

// The same bits, except for what a NaN carries.
bool sameSamples(const std::vector<double>& left, const std::vector<double>& right);
