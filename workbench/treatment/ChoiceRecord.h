#pragma once

#include "workbench/analysis/AnswerChoice.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// What was chosen from the data, and what it does to them. Definitions: workbench/analysis.
struct ChoiceRecord {
    std::string rule;                   // by which the strength was searched; empty: it was given
    std::string method;                 // word of the method
    std::vector<std::string> reasons;   // what was chosen and why, a line each
    std::optional<std::int64_t> steps;  // of the iteration, one less than the loop count
    std::optional<double> strength;     // of the regularised division
    std::optional<double> convergence;  // of the iteration
    std::optional<int> oversampling;    // of the iteration
    double explained = 1.0;             // share of the signal's energy
    double kept = 0.0;                  // degrees of freedom
    double degrees = 0.0;               // that there are
    double noise = 0.0;                 // standard deviation of a sample
    bool noiseIsBound = false;
    std::optional<double> whiteness;
    std::optional<double> predictedError;  // the last error that the module should report
    std::vector<CurvePoint> curve;         // all points of the search
    std::string rerun;                     // the command line with what was found; empty: not known
};

// How far a result may be trusted: 95 of 100 repetitions with other noise lie within the band.
struct UncertaintyRecord {
    double noise = 0.0;       // standard deviation of a sample of the signal
    double halfWidth = 0.0;   // of the band, on average
    double resolution = 0.0;  // in samples: width at half height of what a single line becomes
};

// An impulse response, measured by a sweep.
struct ResponseRecord {
    int channel = 0;
    double peak = 0.0;            // its largest magnitude
    std::int64_t peakSample = 0;  // of the result, where that stands
    double noise = 0.0;  // root mean square of the quietest sixteenth of the whole response

    [[nodiscard]] double decibels() const;  // from the noise to the peak
};
