#pragma once

#include "workbench/signals/SignalAxis.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

// What stands around the samples of a SAC file: 70 floats, 40 integers and 192 letters before them;
// in version 7 also 22 doubles after them, which hold the times without loss (Incorporated Research
// Institutions for Seismology, "SAC Data File Format").
struct SacHeader {
    static constexpr std::int64_t length = 632, footerLength = 176;  // in bytes

    // Whether a file begins so, in either order of bytes: the format has no mark, but a version, a
    // type and a truth value at their places.
    static bool recognises(std::string_view head);

    // Reads both. Failure if the file is not an evenly spaced time series, or has not as many
    // samples as it declares; name is that of the file.
    static SacHeader read(std::FILE* file, const std::string& name);

    // Both of version 7, little-endian, with the extremes and the mean of the samples.
    struct Range {
        double smallest = 0.0, largest = 0.0, mean = 0.0;
    };
    [[nodiscard]] std::string headerBytes(const Range& range) const;
    [[nodiscard]] std::string footerBytes() const;

    // Whether a channel's name has its place: station and component of up to 8 letters each with a
    // point between them, or the first alone, and behind it a unit that the format knows.
    static bool holdsName(const std::string& name);

    int version = 7;
    bool bigEndian = false;
    std::int64_t samples = 0;
    double start = 0.0, step = 0.0;              // in seconds
    double lowestStep = 0.0, highestStep = 0.0;  // of those that would be written as the step is
    std::string name;                            // "ANMO.BHZ (nm/s)"; empty if there is none

private:
    void readTimes(std::FILE* file, const double* floats);
};
