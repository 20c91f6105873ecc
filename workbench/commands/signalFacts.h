#pragma once

#include "workbench/commands/Fact.h"
#include "workbench/signals/SignalReader.h"

#include <vector>

// What is to be said of a signal, which is read from its beginning to its end: its format, length,
// rate and axis, and the values of each channel.
std::vector<Fact> signalFacts(SignalReader& reader);
