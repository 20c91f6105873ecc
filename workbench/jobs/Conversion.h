#pragma once

#include "workbench/signals/SignalReader.h"
#include "workbench/signals/SignalSource.h"
#include "workbench/signals/SignalWriter.h"

#include <string>
#include <vector>

// A signal written again, in the format of another file, as a value.
struct Conversion {
    SignalSource source;
    SignalTarget target;
    double rate = 0.0;  // of a signal that has none, in Hz; 0: not known
    std::string words;  // the command line that does the same again
};

struct ConversionRecord {
    SignalInfo signal;                 // with the rate that it was given
    std::vector<std::string> remarks;  // on what was read as what, and what has no place
};

// Does it, in constant memory. Rate, axis, names and labels go along as far as the format holds
// them.
//   Failure   as openSignal and createSignal; a sample that the target would not give back as it
//             is, unless that is lossy; a rate where one is known. Nothing is written then.
ConversionRecord run(const Conversion& conversion);
