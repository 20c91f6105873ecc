#pragma once

#include "workbench/methods/FendraSettings.h"
#include "workbench/treatment/Treatment.h"

#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

// The options of a command that say what is done around the module.
class TreatmentOptions {
public:
    // What a command does. A convolution is moved to where it belongs, and has no other option;
    // a comparison does not choose the method, and writes the whole of each result.
    enum class Scope { convolution, deconvolution, comparison };

    void addTo(CLI::App& command, Scope scope);

    [[nodiscard]] Treatment treatment() const;
    // Whether the method is left to the data: --auto, and no option of a method of its own.
    [[nodiscard]] bool automatic() const { return wholly; }
    [[nodiscard]] bool choosesBand() const { return !frequencies.empty(); }

    // CLI::ValidationError if an option was given that plays no part under any of these settings,
    // or options contradict each other.
    void refuseIgnored(const std::vector<FendraSettings>& used, bool pads) const;

private:
    void addStrength(CLI::App& command);
    void addNoise(CLI::App& command);
    void addWhole(CLI::App& command);
    [[nodiscard]] Origin originGiven() const;
    [[nodiscard]] KnownNoise noiseGiven() const;

    // As given; empty where an option was not.
    std::string origin = "auto", ends, oversampling = "1", strength, order, frequencies;
    std::string noise = "auto", quiet, kept;
    bool wholly = false, uncertainty = false;
};

// The options that give a treatment, as a command line takes them, each with a blank before it.
std::string treatmentWords(const Treatment& treatment);
