#include "workbench/jobs/MethodComparison.h"

#include "transform/FourierTransform.h"
#include "workbench/messages/Failure.h"
#include "workbench/module/ModuleRun.h"
#include "workbench/terminal/Progress.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

std::vector<double> MethodComparison::runModule(MemorySignal& first, const FendraSettings& settings,
                                                const std::string& work, MethodOutcome* outcome) {
    first.rewind();
    kernel.rewind();
    ModuleRun moduleRun(module, first, kernel, {settings});
    tellEstimate(moduleRun);
    Progress progress;
    progress.announce(work);
    std::vector<double> result;
    moduleRun.drive(
        [&](const double* values, std::int64_t samples) {
            result.assign(values, values + samples * moduleRun.channels());
        },
        [](std::int64_t /*done*/, std::int64_t /*rounds*/) {});
    if (outcome != nullptr && settings.reportsNumbers()) {
        outcome->numberNames = moduleRun.numberNames();
        for (const ReportedNumbers& entry : moduleRun.numbers()) {
            outcome->numbers.insert(outcome->numbers.end(), entry.values.begin(),
                                    entry.values.end());
        }
    }
    return result;
}

// Root of the summed squares of x - y, over that of reference; a shorter y, or one of fewer
// channels, serves as far as it goes.
static double relative(const std::vector<double>& x, const std::vector<double>& y,
                       const std::vector<double>& reference) {
    double differences = 0.0, squares = 0.0;
    for (std::size_t i = 0; i < std::min(x.size(), y.size()); ++i) {
        differences += (x[i] - y[i]) * (x[i] - y[i]);
        squares += reference[i] * reference[i];
    }
    return std::sqrt(differences / squares);
}

MethodOutcome MethodComparison::run(const std::string& method, const FendraSettings& settings,
                                    const MemorySignal* truth) {
    MethodOutcome outcome;
    outcome.method = method;
    try {
        outcome.result = runModule(signal, settings, method, &outcome);
        measure(outcome, settings);
    } catch (const Failure& failure) {
        outcome.failure = failure.what();
        return outcome;
    }
    if (truth != nullptr) {
        outcome.error = relative(outcome.result, truth->interleaved(), truth->interleaved());
    }
    return outcome;
}

static double roughnessOf(const std::vector<double>& x, std::size_t channels) {
    double differences = 0.0, squares = 0.0;
    for (std::size_t i = 0; i < x.size(); ++i) {
        squares += x[i] * x[i];
        if (i >= channels) {
            differences += (x[i] - x[i - channels]) * (x[i] - x[i - channels]);
        }
    }
    return squares == 0.0 ? 0.0 : std::sqrt(differences / squares);
}

void MethodComparison::measure(MethodOutcome& outcome, const FendraSettings& settings) {
    SignalInfo info = signal.info();
    info.channels = std::max(signal.info().channels, kernel.info().channels);
    MemorySignal result(info, outcome.result);
    FendraSettings convolution;
    convolution.method = settings.method == FendraSettings::vanCittert
                             ? FendraSettings::timeDomain
                             : FendraSettings::frequencyDomain;
    const std::vector<double> model =
        runModule(result, convolution, outcome.method + ": misfit", nullptr);
    std::vector<double> measured = signal.interleaved();
    if (signal.info().channels < info.channels) {
        measured.clear();
        for (const double value : signal.interleaved()) {
            measured.insert(measured.end(), static_cast<std::size_t>(info.channels), value);
        }
    }
    outcome.misfit = relative(model, measured, measured);
    outcome.roughness = roughnessOf(outcome.result, static_cast<std::size_t>(info.channels));
}

SpectrumFloor spectrumFloor(const MemorySignal& kernel) {
    const auto channels = static_cast<std::size_t>(kernel.info().channels);
    const auto samples = static_cast<std::size_t>(kernel.info().samples);
    SpectrumFloor floor;
    for (std::size_t c = 0; c < channels; ++c) {
        std::vector<double> re(samples), im(samples);
        for (std::size_t i = 0; i < samples; ++i) {
            re[i] = kernel.interleaved()[i * channels + c];
        }
        FourierTransform().transform(re.data(), im.data(), static_cast<int>(samples), -1);
        double largest = 0.0;
        for (std::size_t i = 0; i < samples; ++i) {
            re[i] = std::hypot(re[i], im[i]);
            largest = std::max(largest, re[i]);
        }
        for (const double magnitude : re) {
            floor.lowBins += magnitude < 1e-3 * largest ? 1 : 0;
            floor.deepest = std::min(floor.deepest, magnitude / largest);
        }
        floor.bins += static_cast<std::int64_t>(samples);
    }
    return floor;
}
