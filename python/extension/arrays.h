#pragma once

#include "workbench/calls/CallSignal.h"
#include "workbench/signals/Signal.h"

#include <pybind11/numpy.h>

#include <optional>
#include <string>
#include <vector>

// Samples as NumPy has them: adjacent 64-bit floats, of one channel, or samples by channels.
using Array = pybind11::array_t<double, pybind11::array::c_style>;

// What is known of a signal beside its samples.
struct Facts {
    std::string name;   // by which messages and records call it
    double rate = 0.0;  // Hz; 0: not known
    std::optional<SignalAxis> axis;

    static Facts of(const SignalInfo& info);
};

// The samples in place: they stay the array's.
CallSignal signalOf(const Array& array, const Facts& facts);

// An array that owns the samples, without a copy.
//   table   samples by channels, also of a single channel
Array arrayOf(std::vector<double>&& interleaved, int channels, bool table);
