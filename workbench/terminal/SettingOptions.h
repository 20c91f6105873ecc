#pragma once

#include "workbench/methods/Setting.h"

#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

// The options of a command that set the module, made from the table of settings.
class SettingOptions {
public:
    // direction: of the command, FendraSettings::convolution or deconvolution.
    explicit SettingOptions(std::int32_t direction);

    // Adds an option for each setting that the direction has; without those named in except.
    void addTo(CLI::App& command, const std::vector<std::string>& except = {});
    // Makes all of them contradict another option.
    void exclude(CLI::Option& other);

    // What was given; the rest as in a new module.
    [[nodiscard]] FendraSettings settings() const;
    // Those that were given as auto. In settings() they are as in a new module.
    [[nodiscard]] LeftToData leftToData() const;

    [[nodiscard]] bool isGiven(const std::string& key) const;
    // Those that were given, as a command line takes them, each with a blank before it.
    [[nodiscard]] std::string words() const;

    // CLI::ValidationError if an option was given that plays no part under any of these settings.
    void refuseIgnored(const std::vector<FendraSettings>& used) const;

private:
    struct Row {
        const Setting* setting;
        std::string value;
        CLI::Option* option;
    };

    FendraSettings base;
    std::vector<Row> rows;
};

// The options that give these settings, as a command line takes them: "--method spectral --per
// block". Those that are left to the data are auto.
std::string optionWords(const FendraSettings& settings, const LeftToData& left = {});
