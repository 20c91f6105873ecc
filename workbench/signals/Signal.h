#pragma once

#include "workbench/signals/SignalReader.h"
#include "workbench/signals/SignalSource.h"

#include <memory>
#include <vector>

// A signal in memory, as a value.
struct Signal {
    SignalInfo info;
    std::vector<double> interleaved;  // the samples of all channels, one after the other

    // The whole of what a reader has left.
    static Signal of(SignalReader& reader);
};

// The samples of one of its channels; those of a signal of one channel serve for all.
std::vector<double> channelOf(const Signal& signal, int channel);

// A source that reads a signal in memory, as often as it is opened.
SignalSource sourceOf(std::shared_ptr<const Signal> signal);
