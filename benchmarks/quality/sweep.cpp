#include "benchmarks/quality/disturbances.h"
#include "benchmarks/quality/sections.h"
#include "workbench/analysis/ExponentialSweep.h"
#include "workbench/analysis/Spectrum.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <memory>

static constexpr double rate = 16000.0;
static constexpr std::size_t start = 1600;  // samples recorded before the sweep is played

static SignalSource sourceAtRate(std::vector<double> samples) {
    Signal signal;
    signal.info.source = SourceName("memory");
    signal.info.channels = 1;
    signal.info.samples = std::ssize(samples);
    signal.info.rate = rate;
    signal.interleaved = std::move(samples);
    return sourceOf(std::make_shared<const Signal>(std::move(signal)));
}

// The sweep in the street, to its last echo, 50 dB above the noise.
static std::vector<double> recording(const std::vector<double>& sweep,
                                     const std::vector<double>& street) {
    std::vector<double> padded(sweep);
    padded.resize(sweep.size() + street.size() - 1);
    std::vector<double> played = periodicConvolution(padded, street);
    const std::vector<double> noisy = withWhiteNoise(played, std::pow(10.0, -50.0 / 20.0), 1);
    const double sigma = std::pow(10.0, -50.0 / 20.0) * rootMeanSquare(played);
    std::vector<double> before = withWhiteNoise(std::vector<double>(start, 1.0), sigma, 2);
    std::transform(before.begin(), before.end(), before.begin(), [](double x) { return x - 1.0; });
    before.insert(before.end(), noisy.begin(), noisy.end());
    return before;
}

// Over the bins from 60 to 7400 Hz of half a second.
static double errorInBand(const std::vector<double>& response, const std::vector<double>& street) {
    std::vector<double> truth(response.size());
    std::copy_n(street.begin(), std::min(street.size(), truth.size() - start),
                truth.begin() + static_cast<std::ptrdiff_t>(start));
    const Spectrum x = spectrumOf(truth, truth.size()), r = spectrumOf(response, truth.size());
    double difference = 0.0, energy = 0.0;
    for (std::size_t j = 0; 2 * j < truth.size(); ++j) {
        const double frequency = static_cast<double>(j) * rate / static_cast<double>(truth.size());
        if (frequency >= 60.0 && frequency <= 7400.0) {
            const std::complex<double> wanted(x.re[j], x.im[j]);
            difference += std::norm(std::complex<double>(r.re[j], r.im[j]) - wanted);
            energy += std::norm(wanted);
        }
    }
    return std::sqrt(difference / energy);
}

void measureSweep(Laboratory& laboratory, Figures& figures) {
    figures.section("a sweep from 50 to 7600 Hz, 4 s, in a street");
    const std::vector<double> sweep = exponentialSweep(50.0, 7600.0, 4.0, rate, 0.0);
    const std::vector<double> street = sampleFile("street.wav");
    FoldJob job;
    job.first = sourceAtRate(recording(sweep, street));
    job.second = sourceAtRate(sweep);
    job.settings.direction = FendraSettings::deconvolution;
    job.settings.method = FendraSettings::regularized;
    job.treatment.frequencies = Span{60.0, 7400.0};
    job.treatment.keep = Span{0.0, 0.5};
    const Answer answer = laboratory.run(job);
    figures.atLeast("decibels between peak and noise", 90.0,
                    answer.outcome.record.responses.at(0).decibels());
    figures.atMost("error in the band", 0.0025, errorInBand(answer.samples(), street));
}
