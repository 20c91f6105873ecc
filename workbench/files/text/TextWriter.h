#pragma once

#include "workbench/files/disk/OutputFile.h"
#include "workbench/signals/SignalWriter.h"

// Text columns, as TextReader reads them: every double comes back as it was.
class TextWriter final : public SignalWriter {
public:
    // Failure if the target has an encoding of samples, or cannot be written.
    TextWriter(const SignalTarget& target, char columnSeparator, const ResultInfo& info);

    void write(const double* interleaved, std::int64_t count) override;
    void flush() override;
    void finish(const std::vector<std::string>& closingNotes) override;

private:
    void writeNotes(const std::vector<std::string>& notes);
    void appendAxis();
    void appendNumber(double value);

    OutputFile output;
    char separator;
    int channels;
    // Sample i stands at start + i / rate, or start - i / rate where the step is below 0; without a
    // rate at start + i step.
    double rate, start, step;
    std::int64_t position = 0;
    std::string text;  // lines on their way to the file
};
