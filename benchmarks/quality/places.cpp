#include "benchmarks/quality/Oracle.h"
#include "benchmarks/quality/disturbances.h"
#include "benchmarks/quality/sections.h"
#include "workbench/analysis/Alignment.h"
#include "workbench/analysis/KernelShape.h"
#include "workbench/files/signalFiles.h"
#include "workbench/methods/Method.h"

#include <fmt/core.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>

static FoldJob jobOf(const Method& method, SignalSource first, SignalSource second) {
    FoldJob job;
    job.first = std::move(first);
    job.second = std::move(second);
    job.settings.direction = method.direction;
    job.settings.method = method.code;
    if (method.code == FendraSettings::vanCittert) {
        job.leftToData.convergence = job.leftToData.maxIterations = true;
    }
    return job;
}

static SignalSource fileOf(const std::string& name) {
    return fileSource(QUALITY_SAMPLES "/" + name, {});
}

static SignalSource sourceOf(const Signal& signal) {
    return ::sourceOf(std::make_shared<const Signal>(signal));
}

static Signal resultOf(Laboratory& laboratory, const FoldJob& job) {
    return laboratory.run(job).outcome.result;
}

static Signal read(const SignalSource& source) {
    return Signal::of(*source.open());
}

// Where on its axis a signal is largest, within a part of it.
static double placeOfLargest(const Signal& signal, double from, double to) {
    double place = std::nan(""), largest = -1.0;
    for (std::size_t i = 0; i < signal.interleaved.size(); ++i) {
        const double x = signal.info.axis->start + static_cast<double>(i) * signal.info.axis->step;
        if (x >= from && x <= to && signal.interleaved[i] > largest) {
            largest = signal.interleaved[i];
            place = x;
        }
    }
    return place;
}

// A smooth signal, so that every method can give it back, and a peak whose zero is its sample 7.
static DataSet gentleSet() {
    DataSet set{.name = "gentle", .truth = {}, .kernel = {}, .zero = 7, .hasAxis = true};
    for (int i = 0; i < 256; ++i) {
        const double x = (i - 100.0) / 12.0, t = (i - 7.0) / 2.0;
        set.truth.push_back(std::exp(-x * x));
        set.kernel.push_back(i < 15 ? std::exp(-t * t) : 0.0);
    }
    return set;
}

// The distance of start and step of the axes, and of the samples, for each pair of methods.
static void measureRoundTrips(Laboratory& laboratory, Figures& figures) {
    const DataSet set = gentleSet();
    const Signal truth = read(set.source(set.truth));
    for (const Method* convolution : Method::of(FendraSettings::convolution)) {
        const Signal blurred =
            resultOf(laboratory, jobOf(*convolution, sourceOf(truth), set.kernelSource()));
        for (const Method* back : Method::of(FendraSettings::deconvolution)) {
            const Signal result =
                resultOf(laboratory, jobOf(*back, sourceOf(blurred), set.kernelSource()));
            const SignalAxis &axis = *result.info.axis, &wanted = *truth.info.axis;
            const Alignment alignment = bestAlignment(result.interleaved, truth.interleaved);
            const auto pair = fmt::format("{} and {}", convolution->word, back->word);
            figures.atMost(pair + ": axis and shift", 0.0,
                           std::abs(axis.start - wanted.start) + std::abs(axis.step - wanted.step) +
                               static_cast<double>(std::abs(alignment.shift)));
            const Oracle oracle(set, set.truth);
            figures.atMost(pair + ": error", 1e-6, oracle.errorOf(result.interleaved));
        }
    }
}

// The measured spectrum is the truth; its line of iron stands at channel 1372.
static void measureXrayLine(Laboratory& laboratory, Figures& figures) {
    const SignalSource truth = fileOf("xrf-spectrum.csv"), peak = fileOf("xrf-zero-peak.csv");
    for (const Method* convolution : Method::of(FendraSettings::convolution)) {
        const Signal blurred = resultOf(laboratory, jobOf(*convolution, truth, peak));
        for (const Method* back : Method::of(FendraSettings::deconvolution)) {
            FoldJob job = jobOf(*back, sourceOf(blurred), peak);
            job.settings.scaling = 0;
            const Signal result = resultOf(laboratory, job);
            figures.atMost(fmt::format("X-ray line, {} and {}: channels from 1372",
                                       convolution->word, back->word),
                           1.0, std::abs(placeOfLargest(result, 1330.0, 1410.0) - 1372.0));
        }
    }
}

static void measureEars(Laboratory& laboratory, Figures& figures) {
    for (const Method* back : Method::of(FendraSettings::deconvolution)) {
        if (back->code != FendraSettings::vanCittert) {
            const Signal result =
                resultOf(laboratory, jobOf(*back, fileOf("ear-far.csv"), fileOf("ear-near.csv")));
            figures.between(fmt::format("ears, {}: milliseconds of the peak", back->word), 0.72,
                            0.74, 1e3 * placeOfLargest(result, -1.0, 1.0));
        }
    }
}

static void measureSpeech(Laboratory& laboratory, Figures& figures) {
    const SignalSource speech = fileOf("speech.wav"), street = fileOf("street.wav");
    FoldJob job;
    job.first = speech;
    job.second = street;
    job.settings.method = FendraSettings::timeDomain;
    const Signal wet = resultOf(laboratory, job);
    job.first = sourceOf(wet);
    job.settings.direction = FendraSettings::deconvolution;
    job.settings.method = FendraSettings::frequencyDomain;
    job.truth = speech;
    figures.atMost("speech in a street by the time domain, divided: error", 1e-13,
                   laboratory.run(job).outcome.record.error->relativeError);
}

void measurePlaces(Laboratory& laboratory, Figures& figures) {
    figures.section("places of results, convolved and deconvolved");
    measureRoundTrips(laboratory, figures);
    measureXrayLine(laboratory, figures);
    measureEars(laboratory, figures);
    measureSpeech(laboratory, figures);
}
