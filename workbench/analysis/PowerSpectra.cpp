#include "workbench/analysis/PowerSpectra.h"

#include "transform/FourierTransform.h"
#include "workbench/messages/Failure.h"

#include <algorithm>
#include <cmath>
#include <string>

static std::vector<double> powerOf(const std::vector<double>& samples, std::size_t length) {
    std::vector<double> re(samples), im(length);
    re.resize(length);
    FourierTransform().transform(re.data(), im.data(), static_cast<int>(length), -1);
    re.resize(length / 2 + 1);
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
                           const std::vector<double>& kernelSamples)
    : length(static_cast<int>(std::max(signalSamples.size(), kernelSamples.size()))),
      signal(powerOf(signalSamples, static_cast<std::size_t>(length))),
      kernel(powerOf(kernelSamples, static_cast<std::size_t>(length))) {
    checkRange(energy(), "signal");
    checkRange(largestGain(), "kernel");
}

int PowerSpectra::multiplicity(std::size_t j) const {
    const auto n = static_cast<std::size_t>(length);
    return j == 0 || 2 * j == n ? 1 : 2;
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
