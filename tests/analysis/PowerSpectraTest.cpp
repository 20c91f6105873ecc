#include "workbench/analysis/PowerSpectra.h"

#include "tests/support/Signal.h"
#include "tests/support/expectNear.h"
#include "workbench/analysis/Oversampling.h"
#include "workbench/messages/Failure.h"

#include <gtest/gtest.h>

#include <limits>

static bool refuses(const Signal& signal, const Signal& kernel) {
    try {
        PowerSpectra(signal, kernel);
    } catch (const Failure&) {
        return true;
    }
    return false;
}

TEST(PowerSpectra, RefuseWhatLeavesTheRange) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    for (const double bad : {0.0, 1e-170, 1e160, nan}) {
        EXPECT_TRUE(refuses({bad, bad, bad}, {1.0, 2.0})) << bad;
        EXPECT_TRUE(refuses({1.0, 2.0}, {bad, bad, bad})) << bad;
    }
    EXPECT_FALSE(refuses({3.0}, {2.0}));
}

// By hand: 1, -1 twofold is a cosine of half the old rate, 1, 0, -1, 0, whose energy stands there.
TEST(PowerSpectra, JoinTheHalvesOfTheBinAtHalfTheRate) {
    const PowerSpectra spectra({1.0, 0.0, -1.0, 0.0}, {1.0, 1.0, 1.0, 1.0}, 2);
    EXPECT_EQ(spectra.degrees(), 2);
    EXPECT_EQ(spectra.signal, (std::vector{0.0, 8.0}));
    EXPECT_EQ(spectra.energy(), 2.0);
}

TEST(PowerSpectra, AreThoseOfOversampledOperands) {
    for (const int n : {7, 8}) {
        const Signal y = noise(n, 1), h = noise(n, 2);
        const Operands fine = oversampled({y, h}, 4);
        const PowerSpectra expected(fine.signal, fine.kernel, 4);
        const PowerSpectra spectra = PowerSpectra(y, h).oversampledBy(4);
        EXPECT_EQ(spectra.length, expected.length);
        EXPECT_EQ(spectra.degrees(), n);
        expectNear(spectra.signal, expected.signal, 1e-11);
        expectNear(spectra.kernel, expected.kernel, 1e-11);
    }
}
