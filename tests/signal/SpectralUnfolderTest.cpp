#include "signal/SpectralUnfolder.h"

#include "tests/support/Guarded.h"
#include "tests/support/Signal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

static Signal unfold(const Signal& signal, const Signal& kernel, int capacity) {
    Guarded result(static_cast<std::size_t>(capacity));
    EXPECT_EQ(
        1, SpectralUnfolder().unfold(signal.data(), static_cast<int>(signal.size()), kernel.data(),
                                     static_cast<int>(kernel.size()), result.data(), capacity));
    return result.values();
}

static void expectNear(const Signal& result, const Signal& expected, double bound) {
    ASSERT_EQ(result.size(), expected.size());
    for (std::size_t n = 0; n < expected.size(); ++n) {
        EXPECT_NEAR(result[n], expected[n], bound) << n;
    }
}

TEST(SpectralUnfolder, HandWorkedValues) {
    struct Row {
        Signal signal, kernel, expected;
    };
    const Row table[] = {{{1, 2, 3, 4}, {1, 0, 0, 0}, {1, 2, 3, 4}},
                         {{1, 2, 3}, {1, 0, 0}, {1, 2, 3}},
                         {{1, 2, 3, 4}, {0, 2, 0, 0}, {1, 1.5, 2, 0.5}},
                         {{1, 2, 3, 4}, {1}, {1, 2, 3, 4, 0, 0}},  // longer than the period
                         {{1, 2, 3, 4}, {1}, {1, 2}},              // shorter
                         {{1, 2, 3}, {0, 0, 0, 0}, {0, 0, 0, 0}},
                         {{}, {}, {0, 0}}};
    for (const auto& [signal, kernel, expected] : table) {
        expectNear(unfold(signal, kernel, static_cast<int>(expected.size())), expected, 1e-14);
    }
}

// The convolution of the result with the kernel is the signal, with either operand the longer one.
// The kernel's unit impulse keeps its spectrum away from zero.
TEST(SpectralUnfolder, ConvolvingTheResultGivesTheSignal) {
    const std::pair<int, int> table[] = {{8, 3},    {3, 8},       {7, 7},    {1, 1},
                                         {100, 40}, {1024, 1024}, {17, 1000}};
    for (const auto& [signalLength, kernelLength] : table) {
        Signal signal = noise(signalLength, 1), kernel = noise(kernelLength, 2);
        for (double& sample : kernel) {
            sample /= 2 * kernelLength;
        }
        kernel[0] += 1.0;
        const int period = std::max(signalLength, kernelLength);
        const Signal result = unfold(signal, kernel, period);
        signal.resize(result.size());
        kernel.resize(result.size());
        expectNear(periodicFold(result, kernel), signal, transformBound(period));
    }
}
