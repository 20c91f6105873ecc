#pragma once

#include "workbench/methods/FendraSettings.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// What a kernel keeps of a signal: its spectrum at the length of the run.
struct KernelGain {
    std::int64_t bins = 0, lowBins = 0;  // all; those below a thousandth of the largest magnitude
    double largest = 0.0;                // magnitude
    double deepest = 1.0;                // smallest magnitude over the largest
};

// What is known of one channel after a run, in terms of what the module was given and what it gave;
// whether a method could carry the answer is judged by it.
struct Evidence {
    FendraSettings settings;
    KernelGain kernel;
    double signalEnergy = 0.0, resultEnergy = 0.0;  // sums of squares
    std::optional<double> noiseEnergy = {};         // of the noise in the result, where it is known
    std::array<double, 2> numbers = {};             // those that the method reports
};

// A way to compute a result, as the module has it or as it is made of several runs of the module:
// one row a method. Each row has a source of its own; their list stands in CMakeLists.txt.
struct Method {
    const char* word;   // by which people choose it: value of the setting domain or method
    const char* about;  // what it is good for, in a sentence for the help
    std::int32_t direction, code;  // as the module's record holds them
    unsigned control;              // radio button in the module's dialog; 0: no module has it
    bool equalLengths;             // whether it needs signals of equal length
    // By how many samples its result is late; of a deconvolution, how late the convolution is that
    // it undoes in place.
    int lag;
    std::array<const char*, 2> numbers;  // keys of the numbers that it reports; null: none
    // Of one channel of one round, at most. length: of the result; shorter: of the shorter signal.
    double (*multiplyAdds)(double length, double shorter, const FendraSettings& settings);
    double (*bytes)(double length);  // beyond a few arrays of that length
    const char* onOverflow;          // what to do where the result is not finite
    // Why it cannot carry the answer, for people; empty: nothing speaks against it.
    std::vector<std::string> (*remarks)(const Evidence& evidence);

    [[nodiscard]] bool reportsNumbers() const { return numbers[0] != nullptr; }
    [[nodiscard]] bool ofModule() const { return control != 0; }

    static const std::vector<const Method*>& all();
    // Those of a direction, in the order of the table.
    static std::vector<const Method*> of(std::int32_t direction);
    // The one that settings select; null where they hold what only a file can.
    static const Method* selectedBy(const FendraSettings& settings);
};

// Parts of rows: what takes no time and memory to speak of, and what nothing speaks against.
double negligibleWork(double length, double shorter, const FendraSettings& settings);
double negligibleMemory(double length);
std::vector<std::string> noRemarks(const Evidence& evidence);

// A result that is noise for half of its root mean square; where that of the noise is not known,
// one far stronger than the kernel's largest gain can explain. Empty if not.
std::vector<std::string> remarksOnAmplification(const Evidence& evidence);
