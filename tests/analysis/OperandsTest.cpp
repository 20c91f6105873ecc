#include "tests/support/PlainTransforms.h"
#include "tests/support/Signal.h"
#include "tests/support/expectNear.h"
#include "workbench/analysis/Oversampling.h"
#include "workbench/analysis/PowerScale.h"
#include "workbench/analysis/RegularizedOperands.h"
#include "workbench/messages/Failure.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <limits>
#include <numbers>
#include <utility>
#include <vector>

// All frequencies that n samples hold, sampled r times as densely; that of half the rate is a
// cosine.
static Signal harmonics(int n, int r) {
    Signal samples(static_cast<std::size_t>(n * r));
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double t = 2.0 * std::numbers::pi * static_cast<double>(i) / (n * r);
        for (int j = 0; 2 * j <= n; ++j) {
            samples[i] += std::cos(j * t) / (1 + j) + (2 * j < n ? std::sin(j * t) : 0.0);
        }
    }
    return samples;
}

TEST(Oversampling, InterpolatesWhatTheSamplesHold) {
    for (const int n : {1, 2, 15, 16}) {
        for (const int r : {1, 2, 3, 4}) {
            const Signal coarse = harmonics(n, 1), fine = interpolated(coarse, r);
            expectNear(fine, harmonics(n, r), n * transformBound(n * r));
            expectNear(everyNth(fine, r), coarse, n * transformBound(n * r));
        }
    }
}

TEST(Oversampling, RefusesMoreThanATransformTakes) {
    EXPECT_THROW(interpolated(Signal(1 << 10), 1 << 20), Failure);
}

// A signal without lag is, among the finer samples, what the time domain makes of them.
TEST(Oversampling, TakesThePlaceOfTheLag) {
    const Signal x = noise(21, 1), h = noise(21, 2);
    const Operands coarse = {periodicFold(x, h), h};
    for (const int r : {2, 4}) {
        const Operands fine = oversampled(coarse, r);
        expectNear(fine.signal, laggingFold(interpolated(x, r), fine.kernel),
                   21 * transformBound(21 * r));
    }
    const Operands same = oversampled(coarse, 1);
    EXPECT_EQ(bits(same.signal), bits(coarse.signal));
    EXPECT_EQ(bits(same.kernel), bits(coarse.kernel));
}

static LongSpectrum spectrumOfReal(const Signal& samples) {
    return definingSum(widen(samples, Signal(samples.size())), -1);
}

// Of real and even taps.
static Signal penaltyOf(const Signal& taps) {
    Signal penalty;
    for (const std::complex<long double>& bin : spectrumOfReal(taps)) {
        penalty.push_back(static_cast<double>(bin.real()));
    }
    return penalty;
}

// On few samples several lags meet in one tap. At the rate of 10 n bin j has the frequency 10 j.
TEST(RegularizedOperands, HaveThePenaltiesOfTheirOrder) {
    for (const std::size_t n : {1U, 2U, 3U, 4U, 5U, 16U, 17U}) {
        const auto length = static_cast<double>(n);
        const double from = std::floor(length / 4.0);
        Signal smooth(n), band(n, 1.0);
        for (std::size_t j = 0; j < n; ++j) {
            const auto bin = static_cast<double>(j);
            const double frequency = std::min(bin, length - bin);
            smooth[j] = std::pow(std::sin(std::numbers::pi * bin / length), 4.0) + 1e-12;
            band[j] = frequency >= from && frequency <= from + 1.0 ? 1e-6 : 1.0;
        }
        const Signal taps = penaltyTaps(2, n);
        expectNear(penaltyOf(taps), smooth, 1e-15);
        expectNear(penaltyOf(penaltyTaps(0, n)), Signal(n, 1.0), 1e-15);
        expectNear(penaltyOf(bandTaps(10.0 * from, 10.0 * from + 10.0, 10.0 * length, n)), band,
                   1e-14);
        smooth.resize(n / 2 + 1);
        expectNear(penaltySpectrum(taps), smooth, 1e-14);
    }
}

TEST(RegularizedOperands, RefuseABandBetweenTwoFrequencies) {
    EXPECT_THROW(bandTaps(11.0, 19.0, 160.0, 16), Failure);
}

// The three runs by defining sums, against X = Y conj(H) / (|H|^2 + l m P).
TEST(RegularizedOperands, MakeTheQuotient) {
    const Signal y = noise(13, 3), h = noise(13, 4), taps = penaltyTaps(2, 13);
    const double strength = 0.01, gain = 7.0;
    const Signal r = periodicFold(h, reversed(h));
    const LongSpectrum a = spectrumOfReal(periodicFold(y, reversed(h)));
    const LongSpectrum kernel = spectrumOfReal(regularizedKernel(r, strength, gain, taps));
    const LongSpectrum Y = spectrumOfReal(y), H = spectrumOfReal(h), P = spectrumOfReal(taps);
    for (std::size_t j = 0; j < y.size(); ++j) {
        const auto expected = Y[j] * std::conj(H[j]) /
                              (std::norm(H[j]) + static_cast<long double>(strength * gain) * P[j]);
        EXPECT_LT(std::abs(a[j] / kernel[j] - expected), 1e-12L) << j;
    }
}

TEST(PowerScale, MovesWhatLeavesTheRangeAndNothingElse) {
    const double infinity = std::numeric_limits<double>::infinity();
    const double smallest = std::numeric_limits<double>::denorm_min();
    const std::vector<std::pair<Signal, int>> cases = {
        {{}, 0},
        {{0.0, -0.0}, 0},
        {{1e-300, -1e60}, 0},
        {{infinity, 1e-60, std::nan("")}, 0},
        {{1e-300, -0x1.8p-201}, -201},
        {{infinity, 0x1.8p201}, 201},
        {{smallest, -3.0 * smallest}, -1073},
        {{1.0, std::numeric_limits<double>::max()}, 1023}};
    for (const auto& [samples, exponent] : cases) {
        EXPECT_EQ(PowerScale::of(samples).exponent, exponent);
        const Signal moved = scaled(samples, -exponent);
        EXPECT_EQ(bits(scaled(moved, exponent)), bits(samples)) << exponent;
        if (exponent != 0) {
            EXPECT_EQ(PowerScale::of(moved).exponent, 0);
        }
    }
}
