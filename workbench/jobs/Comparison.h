#pragma once

#include "workbench/jobs/RunRecord.h"
#include "workbench/signals/SignalSource.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

// Compares a result, as it comes, with a signal that is known: root of the summed squared
// differences over the root of the known signal's summed squares, over the samples that both have.
// A known signal of one channel serves all channels of the result. Of signals below some millions
// of samples, the shift is looked for that would lower the error by half or more.
class Comparison {
public:
    // Failure if the signal cannot be read, or has channels that do not fit.
    Comparison(const SignalSource& truth, int resultChannels);

    void add(const double* interleaved, std::int64_t samples);
    // Failure if the known signal is zero where the result is: no error is relative to that.
    [[nodiscard]] TruthError error() const;

private:
    void findShift(TruthError& found) const;

    std::unique_ptr<SignalReader> reader;
    std::size_t width;
    std::vector<double> buffer;
    std::vector<double> result, known;  // as far as they are short enough to be aligned
    std::int64_t compared = 0;
    double differences = 0.0, squares = 0.0;
};
