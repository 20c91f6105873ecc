#pragma once

#include "workbench/parts/variables/Attributes.h"
#include "workbench/signals/SignalReader.h"

#include <optional>
#include <string>

// How values are packed (NetCDF Users Guide, "Attribute Conventions"): a sample is the value times
// scale plus offset, and NaN where the value is the one that stands for a missing one.
struct Packing {
    double scale = 1.0, offset = 0.0;
    std::optional<double> missing;
    std::optional<double> fill;

    [[nodiscard]] bool isPlain() const;  // a sample is the value
    [[nodiscard]] bool isMissing(double value) const { return value == missing || value == fill; }
    [[nodiscard]] double unpacked(double value) const;
};

// As the attributes scale_factor, add_offset, missing_value and _FillValue say.
Packing packingOf(const Attributes& attributes);

// Sets what the attributes of a variable say about its samples, of which info has the number and
// the channels:
//   rate   the first attribute called rate, fs, sr, sampling rate, sample rate, sampling frequency
//          or sample frequency, whatever its case and whether with blanks, underscores or neither:
//          a number of Hz. One that is no rate gives a remark.
//   axis   where axis_start and axis_step are: in seconds beside a rate, else as axis names it.
//   names  names: one text a channel; else a single channel has the name of the variable, and
//          several have it with a number if units are known. units: one text a channel, or one for
//          all; it stands in brackets after the name.
void describe(SignalInfo& info, const Attributes& attributes, const std::string& variable);

// The last part of a path: "voltage" of "/run 3/voltage".
std::string leafOf(const std::string& path);
