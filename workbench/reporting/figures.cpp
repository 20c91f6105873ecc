#include "workbench/reporting/figures.h"

#include "workbench/methods/Method.h"
#include "workbench/reporting/RunFigure.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

// The label that all have in common, or all of them.
static std::string joined(std::vector<std::string> labels) {
    std::sort(labels.begin(), labels.end());
    labels.erase(std::unique(labels.begin(), labels.end()), labels.end());
    return fmt::format("{}", fmt::join(labels, " / "));
}

Figure figureOf(const std::vector<SharedSignal>& signals) {
    constexpr int most = 12;
    Pane samples = paneOf(PaneKind::samples, signals.size() == 1 ? "Signal" : "Signals", "", "");
    Pane spectra = paneOf(PaneKind::spectra, "Spectra", "", "magnitude");
    std::vector<std::string> x, y, frequencies;
    std::int64_t longest = 0;
    int channels = 0;
    for (const SharedSignal& signal : signals) {
        const SampleAxis axis = SampleAxis::of(signal->info);
        x.push_back(axis.label);
        y.push_back(valueName(signal->info));
        frequencies.push_back(axis.frequencyLabel);
        longest = std::max(longest, signal->info.samples);
        for (int c = 0; c < signal->info.channels; ++c, ++channels) {
            if (channels < most) {
                const std::string name = channelName(signal->info, c);
                std::vector<double> values = channelOf(*signal, c);
                spectra.graphs.push_back(
                    spectrumGraph(values, axis, GraphRole::result, channels, name));
                samples.graphs.push_back(
                    graphOf(std::move(values), axis, GraphRole::result, channels, name));
            }
        }
    }
    samples.x.label = joined(x);
    samples.y.label = joined(y);
    spectra.x.label = joined(frequencies);
    Figure figure{{std::move(samples), std::move(spectra)}, {}};
    if (channels > most) {
        figure.caption.push_back(
            fmt::format("the first {} of {} channels are shown", most, channels));
    }
    if (const std::string note = averagingNote(longest); !note.empty()) {
        figure.caption.push_back(note);
    }
    return figure;
}

Figure figureOf(const SharedSignal& signal, const SharedSignal& kernel, const Outcome& outcome) {
    constexpr int mostChannels = 3;
    RunFigure figure(signal, kernel, outcome.record.rate, mostChannels);
    figure.add(outcome.result, outcome.record, "result");
    return figure.figure(&outcome.record);
}

Figure figureOf(const CompareJob& job, const std::vector<MethodOutcome>& outcomes) {
    RunFigure figure(job.signal, job.kernel, job.rate, 1);
    if (job.truth) {
        figure.addKnown(Signal::of(*job.truth->open()));
    }
    for (const MethodOutcome& outcome : outcomes) {
        if (outcome.failure.empty()) {
            figure.add(outcome.result, outcome.record, outcome.method->word);
        }
    }
    return figure.figure(nullptr);
}
