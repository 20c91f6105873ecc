#pragma once

#include "workbench/jobs/Comparison.h"
#include "workbench/jobs/RunRecord.h"
#include "workbench/signals/SampleDigest.h"
#include "workbench/signals/SignalWriter.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// What a result passes on its way to a writer: it is tested, measured, digested and compared.
class ResultTap {
public:
    // Writer and comparison stay the caller's. onOverflow: what to do where a result is not finite.
    ResultTap(SignalWriter& target, Comparison* withTruth, int resultChannels, bool allowNonfinite,
              std::string onOverflow);

    // The next samples of every channel, interleaved. Where columns beside them are written too,
    // written is the whole of what is written of these samples; else empty.
    // Failure where a sample is NaN or infinite and may not be, and as the writer.
    void take(const double* interleaved, std::int64_t samples,
              const std::vector<double>& written = {});

    // Hands on what was taken so far, where the target is read as it is written.
    void flush() { writer.flush(); }

    // What was found, for the record.
    void describe(RunRecord& record) const;

private:
    void refuseNonfinite(const double* interleaved, std::int64_t samples) const;

    SignalWriter& writer;
    Comparison* comparison;
    int channels;
    bool nonfinite;
    std::string advice;
    SampleDigest digest;
    std::int64_t taken = 0;  // samples of each channel
    double minimum = std::numeric_limits<double>::infinity();
    double maximum = -std::numeric_limits<double>::infinity();
};
