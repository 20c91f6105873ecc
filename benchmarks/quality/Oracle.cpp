#include "benchmarks/quality/Oracle.h"

#include "benchmarks/quality/disturbances.h"
#include "workbench/analysis/AnswerChoice.h"
#include "workbench/analysis/CurveSearch.h"
#include "workbench/analysis/Oversampling.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <limits>
#include <utility>

static std::vector<double> turnedToZero(std::vector<double> kernel, std::int64_t zero,
                                        std::size_t length) {
    kernel.resize(length);
    std::rotate(kernel.begin(), kernel.begin() + zero, kernel.end());
    return kernel;
}

static std::complex<double> bin(const Spectrum& spectrum, std::size_t j) {
    return {spectrum.re[j], spectrum.im[j]};
}

Oracle::Oracle(const DataSet& dataSet, std::vector<double> measuredSignal)
    : set(dataSet),
      measured(std::move(measuredSignal)),
      kernel(turnedToZero(set.kernel, set.zero, measured.size())),
      x(spectrumOf(set.truth, measured.size())),
      y(spectrumOf(measured, measured.size())),
      h(spectrumOf(kernel, measured.size())) {}

// The answer has the spectrum phi Y / H, real in the bin of half the rate.
double Oracle::errorAt(const AnswerCurve& curve, double parameter) const {
    double difference = 0.0, energy = 0.0;
    for (std::size_t j = 0; j < curve.spectra().signal.size(); ++j) {
        std::complex<double> phi = 1.0 - curve.left(j, parameter);
        if (2 * j == measured.size()) {
            phi = phi.real();
        }
        const int times = curve.spectra().multiplicity(j);
        difference += times * std::norm(phi * bin(y, j) / bin(h, j) - bin(x, j));
        energy += times * std::norm(bin(x, j));
    }
    return std::sqrt(difference / energy);
}

double Oracle::iteration(int oversampling) const {
    const Operands operands = oversampled({measured, kernel}, oversampling);
    const PowerSpectra spectra(operands.signal, operands.kernel, oversampling);
    const IterationCurve curve(spectra, 1.0 / spectra.largestGain());
    double least = std::numeric_limits<double>::infinity();
    double steps = 1.0;
    while (steps <= static_cast<double>(AnswerChoice::mostSteps)) {
        const double error = errorAt(curve, steps);
        least = std::isnan(error) ? least : std::min(least, error);
        steps = std::ceil(1.02 * steps);
    }
    return least;
}

double Oracle::regularized(int order) const {
    const RegularizedCurve curve(PowerSpectra(measured, kernel), order);
    double least = std::numeric_limits<double>::infinity();
    double strength = weakestStrength;
    while (strength <= greatestStrength) {
        least = std::min(least, errorAt(curve, strength));
        strength *= 1.1;
    }
    return least;
}

double Oracle::division() const {
    double difference = 0.0, energy = 0.0;
    for (std::size_t j = 0; j < measured.size(); ++j) {
        difference += std::norm(bin(y, j) / bin(h, j) - bin(x, j));
        energy += std::norm(bin(x, j));
    }
    return std::sqrt(difference / energy);
}

double Oracle::best() const {
    return std::min({iteration(1), iteration(4), regularized(2), division()});
}

double Oracle::errorOf(const std::vector<double>& samples) const {
    std::vector<double> difference(samples);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        difference[i] -= set.truth[i];
    }
    return rootMeanSquare(difference) / rootMeanSquare(set.truth);
}

std::vector<double> Oracle::regularizedAnswer(double strength) const {
    const RegularizedCurve curve(PowerSpectra(measured, kernel), 2);
    Spectrum answer = y;
    for (std::size_t j = 0; j < measured.size(); ++j) {
        const std::size_t mirror = std::min(j, measured.size() - j);
        const std::complex<double> value =
            (1.0 - curve.left(mirror, strength)) * bin(y, j) / bin(h, j);
        answer.re[j] = value.real();
        answer.im[j] = value.imag();
    }
    return samplesOf(std::move(answer));
}
