#pragma once

#include "workbench/signals/Signal.h"

#include <cstdint>
#include <string>
#include <vector>

// A signal that is known, and the kernel that blurs it. With the truth x of N samples and the
// kernel h, whose zero is its sample c, the blurred signal is
//     y[n] = sum_k h[k] x[(n - k + c) mod N]
struct DataSet {
    std::string name;
    std::vector<double> truth, kernel;  // the kernel is not longer
    std::int64_t zero = 0;
    bool hasAxis = false;    // signal and kernel say where their zeros are
    bool isCounts = false;   // no value is below 0
    std::int64_t quiet = 0;  // where 400 samples of nothing begin, if there are any

    [[nodiscard]] std::vector<double> blurred() const;
    // The same with 400 samples before it in which there is nothing, whatever the kernel spreads.
    [[nodiscard]] DataSet withQuietStretch() const;
    // Of a signal on the axis of the set, and of the kernel.
    [[nodiscard]] SignalSource source(std::vector<double> samples) const;
    [[nodiscard]] SignalSource kernelSource() const;
};

// Samples of a file in samples/.
std::vector<double> sampleFile(const std::string& file);

// Eight sets of 1024 samples and some more:
//     X-ray lines        a measured spectrum, and the peak of the detector's electronics
//     Raman-like lines   Lorentzian lines on a slope, and a triangular slit
//     events             short blocks, and the difference of two gamma densities
//     bursts             tones of Gaussian envelopes, and an exponential
//     lifetime           the sum of two decays, and an instrument's skewed response
//     electrocardiogram  four seconds, and a recorder slow as an exponential
//     head               the response at the far ear, and that at the near one
//     street             speech, and the start of the response of a street
std::vector<DataSet> dataSets();

// The one of that name.
DataSet dataSet(const std::string& name);
