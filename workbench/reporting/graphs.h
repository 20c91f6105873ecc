#pragma once

#include "workbench/figures/Figure.h"
#include "workbench/signals/Signal.h"

#include <cstdint>
#include <string>
#include <vector>

// Graphs of the channels of signals, with the names and units that their files give.

// Where the samples of a signal stand, and what the axis is called.
struct SampleAxis {
    double start = 0.0, step = 1.0;
    bool falls = false;  // start is that of the last sample
    std::string label;
    double rate = 1.0;  // samples in a unit of the frequency
    std::string frequencyLabel;

    // rate: of a signal that has none, in Hz; 0: not known.
    static SampleAxis of(const SignalInfo& info, double rate = 0.0);
};

// A pane without graphs. Those of samples are linked, and those of spectra logarithmic.
Pane paneOf(PaneKind kind, std::string title, std::string x, std::string y);

// Samples as they stand on the axis, from its lower end on.
Graph graphOf(std::vector<double> samples, const SampleAxis& axis, GraphRole role, int variant,
              std::string name);

// The file's name without its folder; of several channels, with that of the channel.
std::string channelName(const SignalInfo& info, int channel);

// What the values of a channel are called: by the header of its file.
std::string valueName(const SignalInfo& info);

// The magnitude spectrum of samples in as many samples of the axis.
Graph spectrumGraph(const std::vector<double>& samples, const SampleAxis& axis, GraphRole role,
                    int variant, std::string name);

// What a caption says of spectra that are averaged; empty where no signal is long enough.
std::string averagingNote(std::int64_t longestSignal);
