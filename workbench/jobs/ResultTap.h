#pragma once

#include "workbench/files/disk/SampleStore.h"
#include "workbench/jobs/Comparison.h"
#include "workbench/jobs/Gain.h"
#include "workbench/jobs/RunRecord.h"
#include "workbench/signals/SampleDigest.h"
#include "workbench/signals/SignalWriter.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// What a result passes on its way to a writer: it is tested, compared, measured, scaled and
// digested. Where its largest magnitude gives the scale, it waits in a temporary file for that.
class ResultTap {
public:
    // What is to be done with a result.
    struct Handling {
        Gain gain;
        bool allowNonfinite = false;
        bool digested = true;
        std::string onOverflow;  // the advice where a result is not finite
    };

    // Writer and comparison stay the caller's.
    ResultTap(SignalWriter& target, Comparison* withTruth, int resultChannels,
              Handling resultHandling);

    // The next samples of every channel, interleaved. Where columns beside them are written too,
    // written is the whole of what is written of these samples; else empty.
    // Failure where a sample is NaN or infinite and may not be, and as the writer.
    void take(const double* interleaved, std::int64_t samples,
              const std::vector<double>& written = {});

    // Hands on what was taken so far, where the target is read as it is written.
    void flush() { writer.flush(); }

    // After the last samples: writes what has waited.
    void finish();

    // What was found, for the record. What it holds in units of the result is scaled as that was.
    void describe(RunRecord& record) const;

private:
    void refuseNonfinite(const double* interleaved, std::int64_t samples) const;
    void measure(const double* interleaved, std::int64_t samples);
    void pass(const double* rows, std::int64_t samples);
    [[nodiscard]] double scaled(double value) const { return value * factor / divisor; }

    SignalWriter& writer;
    Comparison* comparison;
    int channels;
    Handling handling;
    double factor = 1.0, divisor = 1.0;  // one of both is 1
    std::optional<SampleStore> waiting;
    int columns;  // that are written
    SampleDigest digest;
    std::int64_t taken = 0;            // samples of each channel
    std::int64_t beyondFullScale = 0;  // values, as written
    double peak = 0.0;                 // the largest magnitude that is finite, before it is scaled
    double minimum = std::numeric_limits<double>::infinity();
    double maximum = -std::numeric_limits<double>::infinity();
};
