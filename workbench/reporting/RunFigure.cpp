#include "workbench/reporting/RunFigure.h"

#include "workbench/analysis/NoiseEstimate.h"
#include "workbench/jobs/predictedSignal.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/reporting/choicePane.h"
#include "workbench/reporting/figures.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

RunFigure::RunFigure(std::shared_ptr<const Signal> measured,
                     std::shared_ptr<const Signal> kernelSignal, double rate, int mostChannels)
    : signal(std::move(measured)),
      kernel(std::move(kernelSignal)),
      axis(SampleAxis::of(signal->info, rate)),
      kernelAxis(SampleAxis::of(kernel->info, rate)),
      samples(paneOf(PaneKind::samples, "Signal and result", axis.label, valueName(signal->info))),
      residual(paneOf(PaneKind::residual, "Residual: result convolved with the kernel, less signal",
                      axis.label, valueName(signal->info))),
      kernelPane(paneOf(PaneKind::kernel, "Kernel", kernelAxis.label, valueName(kernel->info))),
      spectra(paneOf(PaneKind::spectra, "Spectra", axis.frequencyLabel, "magnitude")),
      most(mostChannels),
      channels(std::max(signal->info.channels, kernel->info.channels)) {
    addSignals();
}

void RunFigure::addSignals() {
    for (int c = 0; c < std::min(most, signal->info.channels); ++c) {
        const std::string name = channelName(signal->info, c);
        samples.graphs.push_back(graphOf(channelOf(*signal, c), axis, GraphRole::signal, c, name));
        spectra.graphs.push_back(
            spectrumGraph(channelOf(*signal, c), axis, GraphRole::signal, c, name));
    }
    for (int c = 0; c < std::min(most, kernel->info.channels); ++c) {
        const std::string name = channelName(kernel->info, c);
        kernelPane.graphs.push_back(
            graphOf(channelOf(*kernel, c), kernelAxis, GraphRole::kernel, c, name));
        spectra.graphs.push_back(
            spectrumGraph(channelOf(*kernel, c), kernelAxis, GraphRole::kernel, c, name));
    }
}

void RunFigure::add(const Signal& result, const RunRecord& record, const std::string& name) {
    const SampleAxis resultAxis = SampleAxis::of(result.info, record.rate);
    const int columns = result.info.channels / record.channels;
    channels = std::max(channels, record.channels);
    divides = divides || record.settings.direction == FendraSettings::deconvolution;
    for (int c = 0; c < std::min(most, record.channels); ++c, ++results) {
        const std::string shown =
            record.channels == 1 ? name : fmt::format("{}, channel {}", name, c + 1);
        const auto column = [&](int of) { return channelOf(result, columns * c + of); };
        samples.graphs.push_back(graphOf(column(0), resultAxis, GraphRole::result, results, shown));
        if (columns == 3) {
            Graph& graph = samples.graphs.back();
            graph.lower = graphOf(column(1), resultAxis, {}, 0, {}).values;
            graph.upper = graphOf(column(2), resultAxis, {}, 0, {}).values;
        }
        spectra.graphs.push_back(
            spectrumGraph(column(0), resultAxis, GraphRole::result, results, shown));
        addResidual(column(0), record, c, shown);
    }
    if (noise == 0.0) {
        noise = record.choice        ? record.choice->noise
                : record.uncertainty ? record.uncertainty->noise
                                     : 0.0;
    }
}

// Where the result is a part of what the run gave, or of several blocks, the kernel does not lead
// back to the signal by itself.
void RunFigure::addResidual(std::vector<double> result, const RunRecord& record, int channel,
                            const std::string& name) {
    const bool whole = record.settings.direction == FendraSettings::deconvolution &&
                       record.rounds == 1 && std::ssize(result) == signal->info.samples;
    if (!whole) {
        return;
    }
    if (record.gain) {
        const double factor = std::pow(10.0, record.gain->decibels / 20.0);
        for (double& value : result) {
            value /= factor;
        }
    }
    std::vector<double> misfit =
        predictedSignal(std::move(result), channelOf(*kernel, channel), record);
    const std::vector<double> measured = channelOf(*signal, channel);
    for (std::size_t i = 0; i < misfit.size(); ++i) {
        misfit[i] -= measured[i];
    }
    residual.graphs.push_back(graphOf(std::move(misfit), axis, GraphRole::residual, results, name));
}

void RunFigure::addKnown(const Signal& known) {
    samples.graphs.push_back(
        graphOf(channelOf(known, 0), axis, GraphRole::known, 0, channelName(known.info, 0)));
}

// White noise of the deviation s has in N samples a magnitude of s sqrt(N) at all frequencies.
void RunFigure::addNoise() {
    constexpr std::int64_t longest = 1 << 16;
    if (noise == 0.0 && divides && signal->info.samples <= longest) {
        try {
            noise = estimateNoise(PowerSpectra(channelOf(*signal, 0), channelOf(*kernel, 0))).sigma;
        } catch (const Failure&) {
            return;  // the spectra do not tell
        }
    }
    if (noise > 0.0) {
        const double level = noise * std::sqrt(static_cast<double>(signal->info.samples));
        Graph graph = graphOf({level, level}, {}, GraphRole::noise, 0, "noise");
        graph.step = axis.rate / 2.0;
        spectra.graphs.push_back(std::move(graph));
    }
}

std::vector<std::string> RunFigure::notes() const {
    std::vector<std::string> lines;
    if (channels > most) {
        lines.push_back(most == 1
                            ? fmt::format("the first of {} channels is shown", channels)
                            : fmt::format("the first {} of {} channels are shown", most, channels));
    }
    const std::string note = averagingNote(std::max(signal->info.samples, kernel->info.samples));
    if (!note.empty()) {
        lines.push_back(note);
    }
    return lines;
}

std::vector<std::string> captionOf(const RunRecord& record) {
    std::vector<std::string> lines;
    const auto add = [&lines](const std::vector<std::string>& more) {
        lines.insert(lines.end(), more.begin(), more.end());
    };
    if (!record.words.empty()) {
        lines.push_back(record.words);
    }
    add(record.treatmentLines());
    add(record.judgementLines());
    for (const std::string& remark : record.remarks) {
        lines.push_back("remark: " + remark);
    }
    if (!record.digest.empty()) {
        constexpr std::size_t shortDigest = 16;
        lines.push_back("SHA-256 of the result: " + record.digest.substr(0, shortDigest) + "...");
    }
    return lines;
}

Figure RunFigure::figure(const RunRecord* record) {
    addNoise();
    if (results > 1 && record == nullptr) {
        samples.title = "Signal and results";
    }
    Figure figure;
    figure.panes.push_back(std::move(samples));
    if (residual.graphs.size() > 1) {  // each looks as its result does
        for (Graph& graph : residual.graphs) {
            graph.role = GraphRole::result;
        }
    }
    if (!residual.graphs.empty()) {
        figure.panes.push_back(std::move(residual));
    }
    figure.panes.push_back(std::move(kernelPane));
    figure.panes.push_back(std::move(spectra));
    if (record != nullptr) {
        if (record->choice && record->choice->curve.size() > 1) {
            figure.panes.push_back(choicePane(*record->choice));
        }
        figure.caption = captionOf(*record);
    }
    for (std::string& note : notes()) {
        figure.caption.push_back(std::move(note));
    }
    for (std::string& line : figure.caption) {
        line = printable(line);
    }
    return figure;
}
