#include "transform/FourierTransform.h"

#include "tests/support/PlainTransforms.h"
#include "tests/support/Signal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <new>
#include <numbers>
#include <thread>

static LongSpectrum transformed(Signal re, Signal im, int sign) {
    FourierTransform().transform(re.data(), im.data(), static_cast<int>(re.size()), sign);
    return widen(re, im);
}

static double largestDifference(const LongSpectrum& x, const LongSpectrum& y) {
    long double largest = 0;
    for (std::size_t k = 0; k < y.size(); ++k) {
        largest = std::max(largest, std::abs(x.at(k) - y[k]));
    }
    return static_cast<double>(largest);
}

class FourierLengths : public testing::TestWithParam<int> {};

// Both signs, their exponents and their normalisation, on both paths.
TEST_P(FourierLengths, EqualsTheDefiningSum) {
    const int n = GetParam();
    const Signal re = noise(n, 1), im = noise(n, 2);
    LongSpectrum forward = definingSum(widen(re, im), -1), inverse = definingSum(widen(re, im), +1);
    for (auto& value : inverse) {
        value /= n;
    }
    const double bound = n * transformBound(n);  // |X| may be as large as n
    EXPECT_LT(largestDifference(transformed(re, im, -1), forward), bound);
    EXPECT_LT(largestDifference(transformed(re, im, +1), inverse), bound);
}

TEST_P(FourierLengths, ForwardThenInverseIsTheIdentity) {
    const int n = GetParam();
    Signal re = noise(n, 3), im = noise(n, 4);
    const LongSpectrum x = widen(re, im);
    FourierTransform fourier;
    fourier.transform(re.data(), im.data(), n, -1);
    fourier.transform(re.data(), im.data(), n, +1);
    EXPECT_LT(largestDifference(widen(re, im), x), transformBound(n));
}

INSTANTIATE_TEST_SUITE_P(BothPaths, FourierLengths,
                         testing::Values(1, 2, 3, 4, 5, 6, 7, 8, 9, 12, 15, 16, 17, 64, 100, 257,
                                         512, 1000));

TEST(FourierTransform, LeavesAnEmptyOrSingleSampleAlone) {
    for (const int n : {-1, 0, 1}) {
        for (const int sign : {-1, 1}) {
            Signal re = {3.5}, im = {-0.25};
            FourierTransform().transform(re.data(), im.data(), n, sign);
            EXPECT_EQ(re[0], 3.5);
            EXPECT_EQ(im[0], -0.25);
        }
    }
}

TEST(FourierTransform, GivesUpBeyondTheLongestChirp) {
    double untouched = 1.0;
    EXPECT_THROW(FourierTransform().transform(&untouched, &untouched, (1 << 29) + 1, -1),
                 std::bad_alloc);
    EXPECT_EQ(untouched, 1.0);
}

TEST(FourierTransform, NextPowerOfTwoReachesBeyondTheLargestLength) {
    const std::pair<int, std::uint32_t> table[] = {{-5, 1},
                                                   {0, 1},
                                                   {1, 1},
                                                   {2, 2},
                                                   {3, 4},
                                                   {4, 4},
                                                   {5, 8},
                                                   {1 << 30, 1U << 30},
                                                   {(1 << 30) + 1, 1U << 31},
                                                   {std::numeric_limits<int>::max(), 1U << 31}};
    for (const auto& [n, power] : table) {
        EXPECT_EQ(FourierTransform::nextPowerOfTwo(n), power) << n;
    }
}

// The chirp's phase stays exact where k^2 has long left 32 bits.
TEST(FourierTransform, ChirpIsExactAtALongLength) {
    const int n = 100003, m = 2 * n + 11;
    Signal re(m), im(m);
    FourierTransform::makeChirp(re.data(), im.data(), n, m, -1);
    FourierTransform::extendChirp(re.data(), im.data(), n, m);
    for (long long k = 0; k < m; ++k) {
        const long double angle = -std::numbers::pi_v<long double> * (k * k % (2LL * n)) / n;
        const auto at = static_cast<std::size_t>(k);
        ASSERT_NEAR(re[at], static_cast<double>(std::cos(angle)), 2e-15) << k;
        ASSERT_NEAR(im[at], static_cast<double>(std::sin(angle)), 2e-15) << k;
    }
}

class PowersOfTwo : public testing::TestWithParam<int> {};

TEST_P(PowersOfTwo, Radix2DoesThePlainLoopsOperations) {
    const int n = GetParam();
    for (const double sign : {-1.0, 1.0}) {
        Signal re = noise(n, 5), im = noise(n, 6), plainRe = re, plainIm = im;
        EXPECT_EQ(FourierTransform::radix2Transform(re.data(), im.data(), n, sign), n);
        plainRadix2(plainRe, plainIm, sign);
        EXPECT_EQ(bits(re), bits(plainRe)) << sign;
        EXPECT_EQ(bits(im), bits(plainIm)) << sign;
    }
}

TEST_P(PowersOfTwo, HartleyComplexDoesThePlainLoopsOperations) {
    const int n = GetParam();
    for (const int sense : {-1, 0, 1}) {
        Signal re = noise(n, 7), im = noise(n, 8), plainRe = re, plainIm = im;
        FourierTransform().hartleyComplexTransform(re.data(), im.data(), n, sense);
        plainHartleyComplex(plainRe, plainIm, sense);
        EXPECT_EQ(bits(re), bits(plainRe)) << sense;
        EXPECT_EQ(bits(im), bits(plainIm)) << sense;
    }
}

TEST_P(PowersOfTwo, HartleyDoesThePlainLoopsOperations) {
    const int n = GetParam();
    for (const bool normalise : {false, true}) {
        Signal f = noise(n, 9), plain = f;
        HartleyTransform().hartley(f.data(), n, normalise ? 1 : 0);
        plainHartley(plain, normalise);
        EXPECT_EQ(bits(f), bits(plain)) << normalise;
    }
}

INSTANTIATE_TEST_SUITE_P(EveryStage, PowersOfTwo,
                         testing::Values(1, 2, 4, 8, 16, 32, 64, 128, 256, 512, 1024, 4096, 8192,
                                         131072, 1 << 20));

// The exponent and the normalisation sit the other way round than in transform.
TEST(HartleyComplexTransform, SensesOfAUnitImpulse) {
    struct Row {
        int sense;
        std::complex<double> first;
    };
    for (const auto& [sense, first] : {Row{1, {0, 1}}, Row{0, {0, 1}}, Row{-1, {0, -0.25}}}) {
        Signal re = {0, 1, 0, 0}, im(4);
        FourierTransform().hartleyComplexTransform(re.data(), im.data(), 4, sense);
        EXPECT_EQ(std::complex<double>(re[1], im[1]), first);
    }
}

TEST(HartleyTransform, HandWorkedValues) {
    const double root = std::numbers::sqrt2;
    struct Row {
        Signal f;
        int normalise;
        Signal expected;
    };
    const Row table[] = {{{7}, 1, {7}},
                         {{3, 5}, 0, {8, -2}},
                         {{3, 5}, 1, {4, -1}},
                         {{1, 0, 0, 0}, 0, {1, 1, 1, 1}},
                         {{1, 1, 1, 1}, 0, {4, 0, 0, 0}},
                         {{0, 1, 0, 0}, 0, {1, 1, -1, -1}},
                         {{0, 1, 0, 0, 0, 0, 0, 0}, 0, {1, root, 1, 0, -1, -root, -1, 0}}};
    for (const auto& [f, normalise, expected] : table) {
        Signal result = f;
        HartleyTransform().hartley(result.data(), static_cast<int>(f.size()), normalise);
        EXPECT_EQ(result, expected);
    }
}

// The Hartley spectrum is the real part less the imaginary part of the Fourier spectrum.
TEST(HartleyTransform, EqualsTheDefiningSumAtAnyPowerOfTwo) {
    for (const int n : {16, 32, 128, 1024, 131072, 1 << 19}) {
        Signal f = noise(n, 10);
        const LongSpectrum spectrum = longTransform(widen(f, Signal(f.size())), -1);
        HartleyTransform().hartley(f.data(), n, 0);
        for (std::size_t k = 0; k < f.size(); ++k) {
            const auto expected = static_cast<double>(spectrum[k].real() - spectrum[k].imag());
            ASSERT_NEAR(f[k], expected, 1e-15 * std::sqrt(n) * std::log2(n)) << n << ", " << k;
        }
    }
}

// A table that two runs shared would mix their stages up.
TEST(FourierTransform, TwoThreadsGiveTheBitsOfOne) {
    const int n = 1000;
    const auto run = [](std::vector<std::uint64_t>& result, std::uint64_t seed) {
        for (int round = 0; round < 50; ++round) {
            Signal re = noise(n, seed), im = noise(n, seed + 1);
            FourierTransform().transform(re.data(), im.data(), n, -1);
            result = bits(re);
        }
    };
    std::vector<std::uint64_t> alone[2], together[2];
    run(alone[0], 11);
    run(alone[1], 21);
    std::thread other(run, std::ref(together[1]), 21);
    run(together[0], 11);
    other.join();
    EXPECT_EQ(together[0], alone[0]);
    EXPECT_EQ(together[1], alone[1]);
}
