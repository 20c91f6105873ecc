#pragma once

#include "workbench/signals/SignalReader.h"
#include "workbench/signals/SignalWriter.h"
#include "workbench/system/FileHandle.h"

#include <cstdio>
#include <string>
#include <vector>

// A signal as one program of the workbench gives it to another, in a file: the samples,
// interleaved, as they stand in memory; then what is known of them, in JSON; then the length of
// that, in 8 bytes.
struct Transfer {
    SignalInfo info;      // without its source, which both of them know
    SignalTarget target;  // without its name: where the signal is to be written
    std::vector<std::string> notes;

    [[nodiscard]] ResultInfo result() const;
};

// Appends samples. Failure if there is no room for them.
void putSamples(std::FILE* file, const double* samples, std::size_t count);

// Completes the file.
void putFacts(std::FILE* file, const Transfer& transfer);

// The signal of such a file.
class TransferReader final : public SignalReader {
public:
    // Failure if the file is not complete; source is what it is of.
    TransferReader(FileHandle transferred, const SourceName& source);

    std::int64_t read(double* interleaved, std::int64_t count) override;

    [[nodiscard]] const Transfer& transfer() const { return given; }

private:
    FileHandle file;
    Transfer given;
    std::int64_t left = 0;
};
