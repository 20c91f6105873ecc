#pragma once

#include "workbench/module/ModuleRun.h"
#include "workbench/signals/SignalReader.h"

#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

// What a run did, enough to judge its result and to run it again.
struct RunRecord {
    std::string commandLine;
    std::string command, method, per;  // "convolve", "frequency", "block"
    std::int64_t block = 0;            // 0: the whole signal is one block
    bool pad = false;
    std::string graph;  // stored, from which the settings are; empty: none
    FendraSettings settings;
    std::string module, moduleVersion, moduleFile;
    std::vector<SignalInfo> inputs;
    std::string output;
    int channels = 1;
    std::int64_t samples = 0, rounds = 0;
    double rate = 0.0;
    double minimum = std::numeric_limits<double>::infinity();
    double maximum = -std::numeric_limits<double>::infinity();
    std::array<std::string, 2> numberNames;
    std::vector<ReportedNumbers> numbers;  // of methods that report some
    std::string digest;                    // SHA-256 of the samples
    std::string truth;                     // file that the result was compared with
    std::optional<double> error;

    // Comment lines of a text result: known before the run, and known after it.
    [[nodiscard]] std::vector<std::string> openingNotes() const;
    [[nodiscard]] std::vector<std::string> closingNotes() const;
    // For people: a few lines.
    [[nodiscard]] std::string summary() const;
    // For programs: one JSON object.
    [[nodiscard]] std::string json() const;

private:
    [[nodiscard]] std::string work() const;
};

// "3 channels, 44580 samples, 16000 Hz"
std::string describe(int channels, std::int64_t samples, double rate);
