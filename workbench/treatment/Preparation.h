#pragma once

#include "workbench/analysis/Ends.h"
#include "workbench/analysis/Oversampling.h"
#include "workbench/methods/FendraSettings.h"
#include "workbench/treatment/Treatment.h"

#include <cstdint>
#include <vector>

// How the operands of a deconvolution are prepared; all of it is known before the module runs.
struct PreparationPlan {
    // As a treatment and the method of the settings have it; what is left to the data as by
    // default.
    static PreparationPlan of(const FendraSettings& settings, const Treatment& treatment,
                              std::int64_t kernelZero);

    Ends ends = Ends::periodic;
    int oversampling = 1;
    std::int64_t kernelZero = 0;  // sample of the kernel at zero
    int lag = 0;                  // by which the method's result comes early
    bool centred = false;         // the kernel's zero stands in the middle for the module
    bool moves = true;            // the result is moved by zero and lag
};

// Operands as the module takes them, made of a signal and its kernel, and the way back from the
// module's result. One after the other
//   - both are divided by a power of two each, where their squares would leave the range of doubles
//   - the signal goes on beyond its ends as the plan has it, and the kernel gets zeros up to the
//     length of that
//   - both are interpolated (Oversampling.h)
//   - the kernel is turned until its zero stands in the middle.
// On the way back every step is undone, and the result is moved by the kernel's zero and the lag.
class Preparation {
public:
    // length: of the signals to prepare. Failure as the parts.
    Preparation(const std::vector<double>& kernelSamples, std::size_t length, int scaleOfSignal,
                const PreparationPlan& preparationPlan);

    [[nodiscard]] Operands operands(const std::vector<double>& signal) const;
    // Samples on both sides of the signal, before interpolation.
    [[nodiscard]] std::size_t preparedLength() const { return extendedLength; }
    // The result of the module at the signal's length; where nothing was added, at that of the
    // longer of signal and kernel.
    [[nodiscard]] std::vector<double> restored(const std::vector<double>& result) const;
    // The same, before it is cut to the signal's length: all that the module gave.
    [[nodiscard]] std::vector<double> restoredWhole(const std::vector<double>& result) const;
    // Samples that stand before the signal's first one there.
    [[nodiscard]] std::size_t samplesBefore() const { return room.before; }

private:
    PreparationPlan plan;
    std::size_t signalLength;
    int signalExponent, kernelExponent;
    std::vector<double> kernel;
    EndRoom room;
    std::size_t extendedLength;
};

// The taps of the penalty of a regularised division of that many samples. rate: in Hz; Failure if a
// band of frequencies was named and there is none.
std::vector<double> tapsOf(const Treatment& treatment, double rate, std::size_t length);
