#include "benchmarks/quality/DataSet.h"

#include "workbench/analysis/KernelShape.h"
#include "workbench/files/signalFiles.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>
#include <numeric>
#include <stdexcept>
#include <utility>

using Samples = std::vector<double>;

Samples DataSet::blurred() const {
    const auto length = truth.size();
    Samples result(length);
    for (std::size_t n = 0; n < length; ++n) {
        for (std::size_t k = 0; k < kernel.size(); ++k) {
            const std::size_t place = (n + length - k + static_cast<std::size_t>(zero)) % length;
            result[n] += kernel[k] * truth[place];
        }
    }
    return result;
}

DataSet DataSet::withQuietStretch() const {
    constexpr std::int64_t stretch = 400;
    const auto support = static_cast<std::int64_t>(supportOf(kernel));
    DataSet quieter = *this;
    quieter.truth.insert(quieter.truth.begin(), static_cast<std::size_t>(stretch + support), 0.0);
    quieter.quiet = support - zero;
    return quieter;
}

static SignalSource sourceWithAxis(Samples samples, bool hasAxis, double start) {
    Signal signal;
    signal.info.source = SourceName("memory");
    signal.info.channels = 1;
    signal.info.samples = std::ssize(samples);
    if (hasAxis) {
        signal.info.axis = SignalAxis{.name = "place", .start = start, .step = 1.0};
    }
    signal.interleaved = std::move(samples);
    return sourceOf(std::make_shared<const Signal>(std::move(signal)));
}

SignalSource DataSet::source(Samples samples) const {
    return sourceWithAxis(std::move(samples), hasAxis, 0.0);
}

SignalSource DataSet::kernelSource() const {
    return sourceWithAxis(kernel, hasAxis, -static_cast<double>(zero));
}

Samples sampleFile(const std::string& file) {
    const auto reader = openSignal(SourceName(QUALITY_SAMPLES "/" + file), {});
    return Signal::of(*reader).interleaved;
}

// Divided by the sum.
static Samples normalised(Samples samples) {
    const double sum = std::accumulate(samples.begin(), samples.end(), 0.0);
    std::transform(samples.begin(), samples.end(), samples.begin(),
                   [sum](double value) { return value / sum; });
    return samples;
}

template <typename Function>
static Samples sampled(int length, Function function) {
    Samples samples;
    for (int i = 0; i < length; ++i) {
        samples.push_back(function(static_cast<double>(i)));
    }
    return samples;
}

static Samples exponential(double decay) {
    const int length = static_cast<int>(std::ceil(15.0 * decay));
    return normalised(sampled(length, [=](double i) { return std::exp(-i / decay); }));
}

static DataSet xrayLines() {
    return {.name = "X-ray lines",
            .truth = sampleFile("xrf-spectrum.csv"),
            .kernel = sampleFile("xrf-zero-peak.csv"),
            .zero = 40,
            .hasAxis = true,
            .isCounts = true};
}

static DataSet ramanLines() {
    struct Line {
        double place, halfWidth, height;
    };
    constexpr Line lines[] = {{90, 3, 0.5},  {182, 4, 1.0}, {196, 3, 0.6}, {301, 6, 0.35},
                              {420, 3, 0.8}, {433, 3, 0.7}, {540, 8, 0.4}, {655, 2.5, 1.0},
                              {671, 4, 0.3}, {790, 5, 0.6}, {872, 3, 0.9}, {950, 4, 0.2}};
    constexpr double slit = 14.0;
    DataSet set{.name = "Raman-like lines", .truth = {}, .kernel = {}, .isCounts = true};
    set.truth = sampled(1024, [&](double i) {
        double sum = 0.05 + 0.02 * std::sin(std::numbers::pi * i / 1024.0);
        for (const Line& line : lines) {
            const double x = (i - line.place) / line.halfWidth;
            sum += line.height / (1.0 + x * x);
        }
        return sum;
    });
    set.kernel = normalised(sampled(static_cast<int>(2.0 * slit) - 1,
                                    [=](double i) { return slit - std::abs(i + 1.0 - slit); }));
    set.zero = static_cast<std::int64_t>(slit) - 1;
    return set;
}

// A sample stands for half a second. The response rises for five seconds, and falls below nothing
// after fifteen.
static DataSet events() {
    DataSet set{.name = "events", .truth = Samples(1024), .kernel = {}};
    constexpr int starts[] = {60, 132, 171, 260, 318, 344, 452, 520, 603, 655, 760, 806, 905, 940};
    int length = 4;
    for (const int start : starts) {
        std::fill_n(set.truth.begin() + start, length, 1.0);
        length = 4 + (3 * length) % 13;
    }
    set.kernel = normalised(sampled(72, [](double i) {
        const double t = 0.5 * i;
        return std::pow(t, 5.0) * std::exp(-t) / std::tgamma(6.0) -
               std::pow(t, 15.0) * std::exp(-t) / (6.0 * std::tgamma(16.0));
    }));
    return set;
}

static DataSet bursts() {
    DataSet set{.name = "bursts", .truth = {}, .kernel = exponential(5.0)};
    set.truth = sampled(1024, [](double i) {
        double sum = 0.0;
        for (const auto& [place, width, period] : {std::tuple(150.0, 25.0, 9.0),
                                                   {380.0, 40.0, 15.0},
                                                   {600.0, 15.0, 6.0},
                                                   {820.0, 60.0, 25.0}}) {
            const double x = (i - place) / width;
            sum += std::exp(-x * x) * std::cos(2.0 * std::numbers::pi * (i - place) / period);
        }
        return sum;
    });
    return set;
}

// The response is a peak with a tail, on an axis of its own.
static DataSet lifetime() {
    DataSet set{.name = "lifetime", .truth = {}, .kernel = {}, .hasAxis = true, .isCounts = true};
    set.truth = sampled(1024, [](double i) {
        const double t = i - 120.0;
        return t < 0.0 ? 0.0 : 0.7 * std::exp(-t / 18.0) + 0.3 * std::exp(-t / 75.0);
    });
    set.kernel = normalised(sampled(96, [](double i) {
        const double t = i - 20.0, x = t / 5.0;
        return std::exp(-x * x) +
               (t > 0.0 ? 0.15 * (1.0 - std::exp(-x * x)) * std::exp(-t / 8.0) : 0.0);
    }));
    set.zero = 20;
    return set;
}

static DataSet electrocardiogram() {
    DataSet set{.name = "electrocardiogram",
                .truth = sampleFile("ecg-minute.csv"),
                .kernel = exponential(8.0)};
    set.truth.resize(1440);
    return set;
}

static DataSet head() {
    return {.name = "head",
            .truth = sampleFile("ear-far.csv"),
            .kernel = sampleFile("ear-near.csv"),
            .zero = 475,
            .hasAxis = true};
}

static DataSet street() {
    DataSet set{.name = "street", .truth = Samples(2048), .kernel = sampleFile("street.wav")};
    const Samples speech = sampleFile("speech.wav");
    constexpr std::ptrdiff_t word = 13312;
    std::copy_n(speech.begin() + word, 1024, set.truth.begin() + 100);
    set.kernel.resize(900);
    return set;
}

std::vector<DataSet> dataSets() {
    return {xrayLines(), ramanLines(),        events(), bursts(),
            lifetime(),  electrocardiogram(), head(),   street()};
}

DataSet dataSet(const std::string& name) {
    for (DataSet& set : dataSets()) {
        if (set.name == name) {
            return std::move(set);
        }
    }
    throw std::logic_error("no data set " + name);
}
