#pragma once

#include "workbench/methods/Method.h"
#include "workbench/module/ModuleCall.h"
#include "workbench/signals/Signal.h"
#include "workbench/treatment/Choice.h"
#include "workbench/treatment/KernelZero.h"
#include "workbench/treatment/SampleRange.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class ModuleLibrary;

// A deconvolution of whole signals: what is left to the data is chosen, operands are prepared, the
// module runs on them, and its result is brought back to the samples of the signal.
//
// Of several channels, the one whose signal has most energy decides, the first of equal ones, with
// the kernel that goes with it; what is found holds for all.
class Deconvolution {
public:
    // What a channel became.
    struct Answer {
        std::vector<double> samples;
        std::vector<double> numbers;     // that the module reports, in the units of the signal
        std::vector<std::string> names;  // of the numbers
        std::vector<double> halfWidths;  // of the band, one a sample; empty: there is none
        double resolution = 0.0;         // of the answer, where there is a band
        std::optional<ResponseRecord> response;  // where a band of frequencies was named
        std::optional<std::string> fault;        // how the module contradicts the prediction
        Operands operands;                       // that the module was given
        ModuleAnswer made;                       // of them
    };

    // The signals stay the caller's, and keep their length. Failure as chooseFor, and where origin
    // and spans name what the signals do not have.
    Deconvolution(const ModuleLibrary& moduleLibrary, const Signal& measured,
                  const Signal& kernelSignal, const FendraSettings& given,
                  const LeftToData& leftToData, const Treatment& wanted);

    [[nodiscard]] const Choice& choice() const { return chosen; }
    [[nodiscard]] const Method& method() const;
    [[nodiscard]] std::optional<Movement> movement() const;  // none: nothing is moved
    // Of the result: samples, and the axis.
    [[nodiscard]] std::int64_t samples() const { return kept.count(); }
    [[nodiscard]] const std::optional<SignalAxis>& axis() const { return keptAxis; }
    // Samples in the operands of the module, and how often it runs on them for a channel.
    [[nodiscard]] std::int64_t moduleLength() const { return lengthOfOperands; }
    [[nodiscard]] int passes() const { return chosen.noise ? 2 : 1; }

    // One channel. beforePass is called before the module runs on the signal, and before it runs on
    // an impulse for the band; false: stop, by Stopped.
    [[nodiscard]] Answer run(int channel, const std::function<bool(int pass)>& beforePass) const;
    // The samples of a channel's result, of what the module makes of its operands.
    [[nodiscard]] std::vector<double> resultOf(int channel, const std::vector<double>& made) const;

private:
    [[nodiscard]] Preparation preparationOf(int channel, int signalExponent) const;
    [[nodiscard]] ModuleAnswer answerTo(const Operands& operands,
                                        const FendraSettings& settings) const;
    [[nodiscard]] ModuleAnswer divided(const Operands& operands) const;
    void cut(std::vector<double>& samples) const;
    void addResponse(Answer& answer, int channel) const;
    void addBand(Answer& answer, int channel, std::uint32_t loops) const;
    [[nodiscard]] std::vector<double> bandOf(const std::vector<double>& response,
                                             std::size_t before, std::size_t middle,
                                             const std::vector<double>& result, int channel) const;
    [[nodiscard]] std::vector<double> modelOf(const std::vector<double>& result, int channel) const;

    const ModuleLibrary& library;
    const Signal &signal, &kernel;
    int strongest;  // channel
    int exponent;   // of the power of two that the signal is divided by
    std::int64_t lengthOfOperands = 0;
    KernelZero zero;
    Choice chosen;
    SampleRange kept;  // of the result
    std::optional<SignalAxis> keptAxis;
};
