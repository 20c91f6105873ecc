#include "workbench/analysis/RegularizedOperands.h"

#include "workbench/analysis/Spectrum.h"
#include "workbench/messages/Failure.h"

#include <algorithm>
#include <sstream>
#include <utility>

std::vector<double> reversed(const std::vector<double>& kernel) {
    std::vector<double> mirrored = kernel;
    if (!mirrored.empty()) {
        std::reverse(mirrored.begin() + 1, mirrored.end());
    }
    return mirrored;
}

// Lags are periodic: on fewer than five samples several meet in one.
std::vector<double> penaltyTaps(int order, std::size_t length) {
    std::vector<double> taps(length);
    if (order == 0) {
        taps[0] = 1.0;
        return taps;
    }
    taps[0] = 6.0 / 16.0 + 1e-12;
    for (const auto& [lag, tap] : {std::pair{1U, -4.0 / 16.0}, std::pair{2U, 1.0 / 16.0}}) {
        taps[lag % length] += tap;
        taps[(2 * length - lag) % length] += tap;
    }
    return taps;
}

std::vector<double> bandTaps(double from, double to, double rate, std::size_t length) {
    Spectrum weight{std::vector<double>(length, 1.0), std::vector<double>(length)};
    const double spacing = rate / static_cast<double>(length);
    bool some = false;
    for (std::size_t j = 0; 2 * j <= length; ++j) {
        const double frequency = static_cast<double>(j) * spacing;
        if (frequency >= from && frequency <= to) {
            weight.re[j] = 1e-6;
            weight.re[(length - j) % length] = 1e-6;
            some = true;
        }
    }
    if (!some) {
        std::ostringstream text;
        text << "no frequency of the signal lies between " << from << " and " << to
             << "; they are multiples of " << spacing << " up to " << rate / 2.0
             << ": give a wider band";
        throw Failure(text.str());
    }
    return samplesOf(std::move(weight));
}

std::vector<double> penaltySpectrum(const std::vector<double>& taps) {
    std::vector<double> penalty = spectrumOf(taps, taps.size()).re;
    penalty.resize(taps.size() / 2 + 1);
    return penalty;
}

std::vector<double> regularizedKernel(const std::vector<double>& autocorrelation, double strength,
                                      double largestGain, const std::vector<double>& taps) {
    std::vector<double> kernel = autocorrelation;
    for (std::size_t n = 0; n < kernel.size(); ++n) {
        kernel[n] += strength * largestGain * taps[n];
    }
    return kernel;
}
