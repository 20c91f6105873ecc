#pragma once

#include "workbench/methods/FendraSettings.h"
#include "workbench/signals/MemorySignal.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

class B_BasisModule;

// What one method made of a signal.
struct MethodOutcome {
    std::string method;
    std::string failure;         // why there is no result; else empty
    std::vector<double> result;  // interleaved
    std::array<std::string, 2> numberNames;
    std::vector<double> numbers;  // two a channel, of methods that report some
    double misfit = 0.0;
    double roughness = 0.0;
    std::optional<double> error;       // against the truth
    std::vector<std::string> remarks;  // why the method cannot carry the answer
};

// Runs the methods on one signal and one kernel, each as one block, and measures what comes out:
//     misfit      result convolved with the kernel, less the signal, over the signal. The
//                 convolution is the one that the method inverts: in the time domain for the
//                 iteration, with its lag, in the frequency domain for the others.
//     roughness   differences of neighbouring samples, over the samples
//     error       result less truth, over the truth
// each as root mean squares, over all channels.
class MethodComparison {
public:
    MethodComparison(B_BasisModule& driven, MemorySignal& measured, MemorySignal& response)
        : module(driven), signal(measured), kernel(response) {}

    MethodOutcome run(const std::string& method, const FendraSettings& settings,
                      const MemorySignal* truth);

private:
    std::vector<double> runModule(MemorySignal& first, const FendraSettings& settings,
                                  const std::string& work, MethodOutcome* outcome);
    void measure(MethodOutcome& outcome, const FendraSettings& settings);

    B_BasisModule& module;
    MemorySignal& signal;
    MemorySignal& kernel;
};

// In how many bins the kernel's spectrum lies below a thousandth of its largest magnitude, and the
// smallest magnitude over the largest, over all channels.
struct SpectrumFloor {
    std::int64_t bins = 0, lowBins = 0;
    double deepest = 1.0;
};
SpectrumFloor spectrumFloor(const MemorySignal& kernel);
