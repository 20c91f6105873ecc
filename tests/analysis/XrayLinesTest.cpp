#include "tests/support/Signal.h"
#include "transform/FourierTransform.h"
#include "workbench/analysis/AnswerChoice.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <complex>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

using Spectrum = std::vector<std::complex<double>>;

// The last column of a sample, below comments and a header.
static Signal columnOf(const std::string& file) {
    std::ifstream stream(file);
    Signal column;
    for (std::string line; std::getline(stream, line);) {
        if (line[0] != '#' && std::isalpha(line[0]) == 0) {
            column.push_back(std::stod(line.substr(line.find(',') + 1)));
        }
    }
    return column;
}

static Spectrum spectrumOf(Signal re) {
    Signal im(re.size());
    FourierTransform().transform(re.data(), im.data(), static_cast<int>(re.size()), -1);
    Spectrum spectrum;
    for (std::size_t j = 0; j <= re.size() / 2; ++j) {
        spectrum.emplace_back(re[j], im[j]);
    }
    return spectrum;
}

namespace {

// A measured spectrum of X-ray lines, taken as the truth, blurred by the peak of the same
// measurement, with white noise of that share of the blurred signal's root mean square.
struct XrayLines {
    XrayLines(double level, std::uint64_t seed) : signal(periodicFold(truth, kernel)) {
        double energy = 0.0;
        for (const double sample : signal) {
            energy += sample * sample;
        }
        const Signal disturbance = noise(static_cast<int>(signal.size()), seed);
        for (std::size_t i = 0; i < signal.size(); ++i) {
            signal[i] += level * std::sqrt(3.0 * energy / 1024.0) * disturbance[i];
        }
    }

    // Root of the squared error of the estimate phi Y / H, apart from a factor.
    [[nodiscard]] double errorOf(const AnswerCurve& curve, double parameter) const {
        const Spectrum x = spectrumOf(truth), y = spectrumOf(signal), h = spectrumOf(kernel);
        double sum = 0.0;
        for (std::size_t j = 0; j < x.size(); ++j) {
            sum += curve.spectra().multiplicity(j) *
                   std::norm((1.0 - curve.left(j, parameter)) * y[j] / h[j] - x[j]);
        }
        return std::sqrt(sum);
    }

    Signal truth = columnOf("xrf-spectrum.csv"), kernel = columnOf("xrf-zero-peak.csv"), signal;
};

}  // namespace

TEST(XrayLines, AreRestoredNearlyAsByTheBestNumberOfSteps) {
    for (const double level : {1e-3, 1e-2, 5e-2}) {
        for (std::uint64_t seed = 1; seed <= 3; ++seed) {
            const XrayLines lines(level, seed);
            const PowerSpectra spectra(lines.signal, lines.kernel);
            const IterationCurve curve(spectra, 1.0 / spectra.largestGain());
            const double chosen = chooseSteps(curve, std::nullopt).parameter;
            double best = lines.errorOf(curve, chosen);
            for (int steps = 1; steps < 5000; steps += 1 + steps / 5) {
                best = std::min(best, lines.errorOf(curve, steps));
            }
            EXPECT_LT(lines.errorOf(curve, chosen), 1.05 * best) << level << " " << seed;
        }
    }
}
