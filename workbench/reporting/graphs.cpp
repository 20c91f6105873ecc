#include "workbench/reporting/graphs.h"

#include "workbench/messages/Printable.h"
#include "workbench/reporting/spectra.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

constexpr std::size_t longestName = 60;

SampleAxis SampleAxis::of(const SignalInfo& info, double rate) {
    const double known = info.rate > 0.0 ? info.rate : rate;
    SampleAxis axis;
    axis.label = "sample";
    axis.frequencyLabel = "cycles per sample";
    if (known > 0.0) {
        axis.label = "time (s)";
        axis.frequencyLabel = "frequency (Hz)";
        axis.step = 1.0 / known;
        axis.rate = known;
    }
    if (info.axis && (info.axis->time || known == 0.0)) {
        axis.start = info.axis->start;
        axis.step = info.axis->step;
        if (axis.step < 0.0) {
            axis.falls = true;
            axis.start += static_cast<double>(info.samples - 1) * axis.step;
            axis.step = -axis.step;
        }
        axis.rate = 1.0 / axis.step;
        if (!info.axis->time) {
            axis.label = printable(info.axis->name, longestName);
            axis.frequencyLabel = "cycles per " + axis.label;
        }
    }
    return axis;
}

Pane paneOf(PaneKind kind, std::string title, std::string x, std::string y) {
    Pane pane;
    pane.kind = kind;
    pane.title = std::move(title);
    pane.x.label = std::move(x);
    pane.y.label = std::move(y);
    pane.linked = kind == PaneKind::samples || kind == PaneKind::residual;
    pane.y.logarithmic = kind == PaneKind::spectra;
    return pane;
}

Graph graphOf(std::vector<double> samples, const SampleAxis& axis, GraphRole role, int variant,
              std::string name) {
    if (axis.falls) {
        std::reverse(samples.begin(), samples.end());
    }
    Graph graph;
    graph.name = std::move(name);
    graph.role = role;
    graph.variant = variant;
    graph.values = std::make_shared<const Pyramid>(std::move(samples));
    graph.start = axis.start;
    graph.step = axis.step;
    return graph;
}

std::string channelName(const SignalInfo& info, int channel) {
    std::string name = info.source.shown;
    name.erase(0, name.find_last_of('/') + 1);
    if (info.channels > 1) {
        const auto place = static_cast<std::size_t>(channel);
        name += ", " + (place < info.names.size() ? printable(info.names[place], longestName)
                                                  : fmt::format("channel {}", channel + 1));
    }
    return printable(name, 2 * longestName);
}

std::string valueName(const SignalInfo& info) {
    const bool named = info.channels == 1 && info.names.size() == 1;
    return named ? printable(info.names.front(), longestName) : "value";
}

Graph spectrumGraph(const std::vector<double>& samples, const SampleAxis& axis, GraphRole role,
                    int variant, std::string name) {
    MagnitudeSpectrum spectrum = magnitudeSpectrum(samples);
    Graph graph;
    graph.name = std::move(name);
    graph.role = role;
    graph.variant = variant;
    graph.values = std::make_shared<const Pyramid>(std::move(spectrum.magnitudes));
    graph.step = axis.rate / static_cast<double>(spectrum.length);
    return graph;
}

std::string averagingNote(std::int64_t longestSignal) {
    if (longestSignal <= static_cast<std::int64_t>(longestWhole)) {
        return {};
    }
    return fmt::format(
        "spectra of signals of more than {} samples are root mean squares over {} stretches of {} "
        "samples at most, spread over the signal (Hann window)",
        longestWhole, mostStretches, stretchLength);
}
