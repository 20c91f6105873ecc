#include "workbench/analysis/OverlapAdd.h"

#include "tests/support/Signal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>

// The whole result: what its blocks give, added up.
static Signal convolved(const Signal& x, const Signal& h, std::int64_t block) {
    OverlapAdd convolution(h, block);
    const std::int64_t length = std::min<std::int64_t>(convolution.block(), std::ssize(x));
    convolution.prepare(length);
    Signal result(x.size() + h.size() - 1);
    for (std::int64_t i = 0; i < std::ssize(x); i += length) {
        const Signal piece = convolution.convolve(&x[static_cast<std::size_t>(i)],
                                                  std::min(length, std::ssize(x) - i));
        std::transform(piece.begin(), piece.end(), result.data() + i, result.data() + i,
                       std::plus<>());
    }
    return result;
}

// Root of the sum of squared differences from the defining sum, over that of the sum's own squares.
static long double relativeError(const Signal& c, const Signal& x, const Signal& h) {
    long double wrong = 0.0L, all = 0.0L;
    for (std::size_t i = 0; i < c.size(); ++i) {
        long double sum = 0.0L;
        const std::size_t first = i < x.size() ? 0 : i - (x.size() - 1);
        for (std::size_t k = first; k < std::min(h.size(), i + 1); ++k) {
            sum += static_cast<long double>(h[k]) * static_cast<long double>(x[i - k]);
        }
        const long double difference = static_cast<long double>(c[i]) - sum;
        wrong += difference * difference;
        all += sum * sum;
    }
    return std::sqrt(wrong / all);
}

namespace {

struct Case {
    int samples, taps;
    std::int64_t block;
};

class OverlapAddOf : public testing::TestWithParam<Case> {};

}  // namespace

TEST_P(OverlapAddOf, IsTheDefiningSum) {
    const auto [samples, taps, block] = GetParam();
    const Signal x = noise(samples, 1), h = noise(taps, 2);
    const Signal c = convolved(x, h, block);
    const double length = std::max(2.0, static_cast<double>(c.size()));
    EXPECT_LE(relativeError(c, x, h), 1e-14 * std::sqrt(std::log2(length)));
}

INSTANTIATE_TEST_SUITE_P(ShortestSignals, OverlapAddOf,
                         testing::Values(Case{1, 1, 0}, Case{2, 1, 0}, Case{1, 2, 0},
                                         Case{1, 1000, 0}, Case{3, 2, 1}, Case{5, 1, 1},
                                         Case{5, 1, 2}));
INSTANTIATE_TEST_SUITE_P(AboutTheEndOfABlock, OverlapAddOf,
                         testing::Values(Case{63, 8, 64}, Case{64, 8, 64}, Case{65, 8, 64},
                                         Case{128, 8, 64}, Case{129, 8, 64}, Case{2041, 8, 0},
                                         Case{1018, 8, 0}));
INSTANTIATE_TEST_SUITE_P(KernelsOfManyBlocks, OverlapAddOf,
                         testing::Values(Case{500, 333, 1}, Case{500, 333, 10}, Case{50, 333, 20},
                                         Case{1000, 999, 500}));
INSTANTIATE_TEST_SUITE_P(LongSignals, OverlapAddOf,
                         testing::Values(Case{60000, 11, 0}, Case{60000, 3001, 0},
                                         Case{60000, 3001, 1000}, Case{20000, 20000, 0}));

// A pipe is given what it has a block late.
TEST(OverlapAdd, HasShortBlocksForShortKernels) {
    EXPECT_LE(OverlapAdd(noise(1, 1)).block(), 1024);
    EXPECT_LE(OverlapAdd(noise(11, 1)).block(), 1024);
}
