#pragma once

#include "workbench/signals/SignalReader.h"
#include "workbench/signals/SignalWriter.h"

#include <string>

// Writes a signal as the dataset /signal, samples by channels, of 64-bit floats or those of 32 bits
// that the target asks for, with the attributes
//   rate                          in Hz
//   axis, axis_start, axis_step   its name; in seconds beside a rate
//   names, units                  one text a channel
//   notes                         one text a line
// of which those are left out that nothing is known for. The bytes depend on nothing else.
// Failure if it cannot be written, or would hold a single sample of several channels: a single row
// is read as one signal.
void writeHdf5(const std::string& path, SignalReader& samples, const SignalTarget& target,
               const ResultInfo& info);
