#include "workbench/reporting/spectra.h"

#include "workbench/analysis/Spectrum.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

static void addSquares(const std::vector<double>& samples, std::vector<double>& squares) {
    const Spectrum spectrum = spectrumOf(samples, samples.size());
    for (std::size_t j = 0; j < squares.size(); ++j) {
        squares[j] += spectrum.re[j] * spectrum.re[j] + spectrum.im[j] * spectrum.im[j];
    }
}

// Hann's, of the period n.
static std::vector<double> windowOf(std::size_t n) {
    std::vector<double> window(n);
    for (std::size_t i = 0; i < n; ++i) {
        const double sine =
            std::sin(std::numbers::pi * static_cast<double>(i) / static_cast<double>(n));
        window[i] = sine * sine;
    }
    return window;
}

static double numberOf(double sample) {
    return std::isfinite(sample) ? sample : 0.0;
}

// Stretches overlap by half, unless there were more than so many of them.
static void addStretches(const std::vector<double>& samples, MagnitudeSpectrum& spectrum) {
    const std::size_t length = spectrum.length, room = samples.size() - length;
    spectrum.stretches = std::min(mostStretches, 2 * room / length + 1);
    const std::vector<double> window = windowOf(length);
    double windowSquares = 0.0;
    for (const double h : window) {
        windowSquares += h * h;
    }
    std::vector<double> stretch(length);
    for (std::size_t k = 0; k < spectrum.stretches; ++k) {
        const std::size_t first = k * (room / (spectrum.stretches - 1));
        for (std::size_t i = 0; i < length; ++i) {
            stretch[i] = window[i] * numberOf(samples[first + i]);
        }
        addSquares(stretch, spectrum.magnitudes);
    }
    const double factor = static_cast<double>(samples.size()) / windowSquares /
                          static_cast<double>(spectrum.stretches);
    for (double& square : spectrum.magnitudes) {
        square *= factor;
    }
}

MagnitudeSpectrum magnitudeSpectrum(const std::vector<double>& samples) {
    MagnitudeSpectrum spectrum;
    const bool averaged = samples.size() > longestWhole;
    spectrum.length = averaged ? stretchLength : samples.size();
    spectrum.magnitudes.resize(spectrum.length / 2 + 1);
    if (averaged) {
        addStretches(samples, spectrum);
    } else {
        std::vector<double> numbers(samples.size());
        std::transform(samples.begin(), samples.end(), numbers.begin(), numberOf);
        addSquares(numbers, spectrum.magnitudes);
    }
    for (double& magnitude : spectrum.magnitudes) {
        magnitude = std::sqrt(magnitude);
    }
    return spectrum;
}
