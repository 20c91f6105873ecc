#include "workbench/analysis/PowerSpectra.h"

#include "transform/FourierTransform.h"
#include "workbench/messages/Failure.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>

static std::vector<double> powerOf(const std::vector<double>& samples, std::size_t length,
                                   std::size_t bins) {
    std::vector<double> re(samples), im(length);
    re.resize(length);
    FourierTransform().transform(re.data(), im.data(), static_cast<int>(length), -1);
    re.resize(bins);
    std::transform(re.begin(), re.end(), im.begin(), re.begin(),
                   [](double x, double y) { return x * x + y * y; });
    return re;
}

static void checkRange(double square, const std::string& what) {
    if (!std::isnormal(square) || !std::isnormal(1.0 / square)) {
        throw Failure("the " + what +
                      " is zero, or the squares of its samples leave the range of numbers: nothing "
                      "can be chosen from it; give one of another scale");
    }
}

PowerSpectra::PowerSpectra(const std::vector<double>& signalSamples,
                           const std::vector<double>& kernelSamples, int oversamplingFactor)
    : length(static_cast<int>(std::max(signalSamples.size(), kernelSamples.size()))),
      oversampling(oversamplingFactor) {
    const auto size = static_cast<std::size_t>(length);
    const std::size_t bins = size / static_cast<std::size_t>(oversampling) / 2 + 1;
    signal = powerOf(signalSamples, size, bins);
    kernel = powerOf(kernelSamples, size, bins);
    if (oversampling > 1 && degrees() % 2 == 0) {
        signal.back() *= 2.0;
    }
    checkRange(energy(), "signal");
    checkRange(largestGain(), "kernel");
}

// The bin at half the rate is halved into two, and its signal summed over both.
PowerSpectra PowerSpectra::oversampledBy(int factor) const {
    PowerSpectra fine = *this;
    if (factor == 1) {
        return fine;
    }
    fine.length *= factor;
    fine.oversampling = factor;
    for (double& power : fine.signal) {
        power *= factor * factor;
    }
    if (degrees() % 2 == 0) {
        fine.signal.back() *= 0.5;
        fine.kernel.back() *= 0.25;
    }
    return fine;
}

int PowerSpectra::multiplicity(std::size_t j) const {
    return j == 0 || 2 * j == static_cast<std::size_t>(degrees()) ? 1 : 2;
}

double PowerSpectra::frequency(std::size_t j) const {
    return 2.0 * std::numbers::pi * static_cast<double>(j) / length;
}

double PowerSpectra::energy() const {
    double sum = 0.0;
    for (std::size_t j = 0; j < signal.size(); ++j) {
        sum += multiplicity(j) * signal[j];
    }
    return sum / length;
}

double PowerSpectra::largestGain() const {
    return *std::max_element(kernel.begin(), kernel.end());
}
