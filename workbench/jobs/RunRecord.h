#pragma once

#include "workbench/methods/FendraSettings.h"
#include "workbench/module/ModuleRun.h"
#include "workbench/signals/SignalReader.h"
#include "workbench/treatment/ChoiceRecord.h"
#include "workbench/treatment/KernelZero.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

// How far a result is from a signal that is known.
struct TruthError {
    SourceName truth;
    double relativeError = 0.0;
    std::int64_t samples = 0;  // compared, of each channel: as many as both have
    std::int64_t known = 0;    // those of the known signal
    // The shift of the result, positive to later samples, that would lower the error by half or
    // more, and that error; 0: none would.
    std::int64_t shift = 0;
    double shiftedError = 0.0;
};

// How a result was scaled.
struct GainRecord {
    double decibels = 0.0;
    std::optional<double> peak;  // that became 1.0, where the result was normalized; 0: all is zero
};

// Where an iteration was stopped.
struct StopRecord {
    std::uint32_t loop = 0, most = 0;  // its loop count, and the bound on that
    std::string rerun;  // the command line that gives the same without a stop; empty: not known

    [[nodiscard]] std::string text() const;
};

// What a run did, enough to judge its result and to run it again.
struct RunRecord {
    std::string words;        // the command line
    FendraSettings settings;  // with which the module ran
    std::int64_t block = 0;   // 0: the whole signal is one block
    bool pad = false;
    std::string graph;  // stored, from which the settings are; empty: none
    std::string module, moduleVersion, moduleFile;
    bool overlapAdd = false;  // the samples are from the workbench's overlap-add, not the module
    bool stopped = false;     // by the observer: the result is the estimate so far
    std::vector<SignalInfo> inputs;
    SourceName output;
    int channels = 1;
    std::int64_t samples = 0, rounds = 0;
    double rate = 0.0;
    double minimum = std::numeric_limits<double>::infinity();
    double maximum = -std::numeric_limits<double>::infinity();
    std::vector<std::string> numberNames;  // in the user's language
    std::vector<ReportedNumbers> numbers;  // of methods that report some
    std::string digest;                    // SHA-256 of the samples
    std::optional<TruthError> error;
    std::vector<std::string> remarks;  // why the result may not be what was wanted
    std::optional<Movement> moved;
    bool stays = false;  // the result was to stay as the module gives it
    std::optional<ChoiceRecord> choice;
    std::optional<UncertaintyRecord> uncertainty;
    std::optional<GainRecord> gain;
    std::int64_t beyondFullScale = 0;       // values whose magnitude is above 1.0
    std::vector<ResponseRecord> responses;  // one a channel, where a band of frequencies was named
    std::optional<StopRecord> stop;         // of a single iteration

    // Comment lines of a text result: known before the run, and known after it.
    [[nodiscard]] std::vector<std::string> openingNotes() const;
    [[nodiscard]] std::vector<std::string> closingNotes() const;
    // Of these, what was chosen and done to the signals, and what the result is worth.
    [[nodiscard]] std::vector<std::string> treatmentLines() const;
    [[nodiscard]] std::vector<std::string> judgementLines() const;
    // For people: a few lines.
    [[nodiscard]] std::string summary() const;
    // For programs: one JSON object. Its keys are the same in every language.
    [[nodiscard]] std::string json() const;

private:
    [[nodiscard]] std::string work() const;
};

// "44580 samples in 3 channels, 16000 Hz"; of 0 samples, "samples as they come".
std::string describe(int channels, std::int64_t samples, double rate);
