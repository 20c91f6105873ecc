#include "workbench/jobs/DataChoice.h"

#include "workbench/messages/Failure.h"
#include "workbench/methods/Setting.h"
#include "workbench/signals/Signal.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

static void refuseUnfit(const FoldJob& job, const ModuleRun& moduleRun) {
    if (!Setting::named("convergence").applies(job.settings)) {
        throw Failure(
            "convergence and max-iterations are left to the data, but only the iteration has them; "
            "choose method=van-cittert");
    }
    if (moduleRun.rounds() > 1) {
        throw Failure(fmt::format(
            "settings are chosen from whole signals, and these are cut into {} blocks; leave out "
            "--block, join them with --per packet, or give numbers instead of auto",
            moduleRun.rounds()));
    }
}

static std::vector<double> channelOf(const Signal& signal, int channel) {
    const auto width = static_cast<std::size_t>(signal.info.channels);
    std::vector<double> samples;
    for (auto i = static_cast<std::size_t>(channel); i < signal.interleaved.size(); i += width) {
        samples.push_back(signal.interleaved[i]);
    }
    return samples;
}

static int strongestChannel(const Signal& signal) {
    const auto width = static_cast<std::size_t>(signal.info.channels);
    std::vector<double> energies(width);
    for (std::size_t i = 0; i < signal.interleaved.size(); ++i) {
        energies[i % width] += signal.interleaved[i] * signal.interleaved[i];
    }
    return static_cast<int>(std::max_element(energies.begin(), energies.end()) - energies.begin());
}

DataChoice::DataChoice(const FoldJob& job, const ModuleRun& moduleRun)
    : left(job.leftToData), found(job.settings) {
    refuseUnfit(job, moduleRun);
    const Signal signal = Signal::of(*job.first.open()), kernel = Signal::of(*job.second.open());
    channel = strongestChannel(signal);
    const PowerSpectra spectra(channelOf(signal, channel),
                               channelOf(kernel, kernel.info.channels == 1 ? 0 : channel));
    if (left.convergence) {
        found.convergence = 1.0 / spectra.largestGain();
    }
    curve.emplace(spectra, found.convergence);
    if (left.maxIterations) {
        choice = chooseSteps(*curve, std::nullopt);
        found.maxIterations = static_cast<std::uint32_t>(choice.parameter) + 1;
    } else {
        const std::int64_t asked = std::int64_t{found.maxIterations} - 1;
        choice = judgeSteps(*curve, found.abortAtMinError != 0 ? curve->lastFalling(asked) : asked,
                            std::nullopt);
    }
    refuseUnexplained(signal.info);
}

void DataChoice::refuseUnexplained(const SignalInfo& info) const {
    const bool asked = left.maxIterations || found.maxIterations > 1;
    if (asked && !(choice.explained >= 0.05)) {
        throw Failure(fmt::format(
            "{}: the iteration explains {:.2g} % of its energy by this kernel, too little for a "
            "result; {}",
            info.source.shown, 100.0 * choice.explained,
            left.convergence ? "try --method spectral, or another kernel"
                             : "try --convergence auto, or --method spectral"));
    }
}

ChoiceRecord DataChoice::record() const {
    return {.bySearch = left.maxIterations,
            .ofKernel = left.convergence,
            .steps = static_cast<std::int64_t>(choice.parameter),
            .convergence = found.convergence,
            .explained = choice.explained,
            .kept = choice.kept,
            .noise = choice.noise,
            .noiseIsBound = choice.noiseIsBound,
            .predictedError = choice.predictedError,
            .rerun = ""};
}

std::vector<std::string> DataChoice::remarks(const std::vector<ReportedNumbers>& numbers) const {
    std::vector<std::string> remarks;
    if (choice.atEdge()) {
        remarks.push_back(fmt::format(
            "the choice lies at an edge of the range, from 1 to {} steps: no balance of noise and "
            "detail was found inside it; compare with other --max-iterations",
            choice.last));
    }
    if (choice.explained < 0.5) {
        remarks.push_back(fmt::format(
            "the iteration explains {:.2g} % of the signal's energy by the kernel; the rest is "
            "noise, or the kernel does not fit",
            100.0 * choice.explained));
    }
    for (const ReportedNumbers& entry : numbers) {
        const auto steps = static_cast<std::int64_t>(entry.values.at(1)) - 1;
        if (entry.channel == channel && !curve->predicts(entry.values[0], steps)) {
            remarks.push_back(
                fmt::format("internal error: after {} steps the module reports the last error "
                            "{:.9g}, and {:.9g} "
                            "was predicted; do not rely on the choice, and report this",
                            steps, entry.values[0], curve->at(entry.values.at(1) - 1.0).error));
        }
    }
    return remarks;
}
