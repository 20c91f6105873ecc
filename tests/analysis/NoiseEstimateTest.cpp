#include "workbench/analysis/NoiseEstimate.h"

#include "tests/support/Signal.h"
#include "workbench/analysis/Spectrum.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

// A kernel of n samples that has the gain 1 up to half of the highest frequency, and low beyond.
static Signal kernelOfTwoGains(std::size_t n, double low) {
    Spectrum spectrum{Signal(n, low), Signal(n)};
    std::fill_n(spectrum.re.begin(), n / 4 + 1, 1.0);
    std::fill_n(spectrum.re.end() - static_cast<std::ptrdiff_t>(n / 4), n / 4, 1.0);
    return samplesOf(spectrum);
}

// Noise of the variance 1/3. Divided by the kernel, its upper half grows to 1e4 sqrt(1/2) times its
// root mean square. The median of 511 bins is off by 6 %, the sum of their powers by 4 %, and each
// shows by its root.
TEST(NoiseEstimate, TellsByEmptyBinsWhatTheNoiseIsBeforeAndAfterADivision) {
    constexpr std::size_t n = 1024;
    const double sigma = std::sqrt(1.0 / 3.0);
    for (const std::uint64_t seed : {1U, 2U, 3U, 4U}) {
        const PowerSpectra spectra(noise(n, seed), kernelOfTwoGains(n, 1e-4));
        EXPECT_NEAR(estimateNoise(spectra).sigma, sigma, 0.1 * sigma);
        EXPECT_FALSE(estimateNoise(spectra).isBound);
        EXPECT_NEAR(noiseOfQuotient(spectra).value_or(0.0), 1e4 * sigma * std::sqrt(0.5),
                    0.1 * 1e4 * sigma * std::sqrt(0.5));
    }
}

TEST(NoiseEstimate, IsABoundWhereTheKernelLeavesNoBinEmpty) {
    const PowerSpectra spectra(noise(256, 5), kernelOfTwoGains(256, 2e-3));
    EXPECT_TRUE(estimateNoise(spectra).isBound);
    EXPECT_FALSE(noiseOfQuotient(spectra).has_value());
}

// Rough as it is, the signal fills the lower half of the spectrum alone. Taken for smooth, it
// leaves a hundred times the noise.
TEST(NoiseEstimate, IsBoundedByTheWeakestPartOfTheSpectrum) {
    constexpr std::size_t n = 1024;
    const double sigma = 1e-3 * std::sqrt(1.0 / 3.0);
    Signal signal = periodicConvolution(noise(n, 6), kernelOfTwoGains(n, 0.0));
    const Signal disturbance = noise(n, 7);
    for (std::size_t i = 0; i < n; ++i) {
        signal[i] += 1e-3 * disturbance[i];
    }
    const NoiseEstimate estimate = estimateNoise(PowerSpectra(signal, {1.0}));
    EXPECT_TRUE(estimate.isBound);
    EXPECT_NEAR(estimate.sigma, sigma, 0.15 * sigma);
}
