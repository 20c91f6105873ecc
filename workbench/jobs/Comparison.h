#pragma once

#include "workbench/files/signalFiles.h"

#include <cstdint>
#include <string>
#include <vector>

// Compares a result, as it comes, with a signal that is known: root of the summed squared
// differences over the root of the known signal's summed squares, over the samples that both have.
class Comparison {
public:
    // Failure if the file cannot be read, or its channels are neither one nor as many as the
    // result's.
    Comparison(const std::string& path, const ReadOptions& options, int resultChannels);

    void add(const double* interleaved, std::int64_t samples);
    [[nodiscard]] double relativeError() const;

private:
    std::unique_ptr<SignalReader> reader;
    std::size_t width;
    std::vector<double> buffer;
    double differences = 0.0, squares = 0.0;
};
