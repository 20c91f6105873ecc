#include "tests/support/PlainTransforms.h"
#include "tests/support/Signal.h"
#include "transform/FourierTransform.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdio>

// Prints the table of errors of the forward transform, against the long double one, on noise.

static double forwardError(int n) {
    Signal re = noise(n, 1), im = noise(n, 2);
    const LongSpectrum expected = longTransform(widen(re, im), -1);
    FourierTransform().transform(re.data(), im.data(), n, -1);
    const LongSpectrum spectrum = widen(re, im);
    long double difference = 0, reference = 0;
    for (std::size_t k = 0; k < expected.size(); ++k) {
        difference += std::norm(spectrum[k] - expected[k]);
        reference += std::norm(expected[k]);
    }
    return static_cast<double>(std::sqrt(difference / reference));
}

namespace {

class Accuracy : public testing::TestWithParam<int> {};

}  // namespace

TEST_P(Accuracy, RelativeErrorOfTransform) {
    const int n = GetParam();
    const bool powerOfTwo = std::has_single_bit(static_cast<unsigned>(n));
    const double error = forwardError(n);
    std::printf("    n = %7d  %-8s  relative RMS error %.2e\n", n, powerOfTwo ? "radix 2" : "chirp",
                error);
    EXPECT_LE(error, powerOfTwo && n <= 1 << 16 ? 1e-12 : 1e-11);
}

INSTANTIATE_TEST_SUITE_P(PowersOfTwo, Accuracy,
                         testing::Values(1 << 4, 1 << 5, 1 << 6, 1 << 7, 1 << 8, 1 << 9, 1 << 10,
                                         1 << 11, 1 << 12, 1 << 13, 1 << 14, 1 << 15, 1 << 16,
                                         1 << 17, 1 << 18, 1 << 19, 1 << 20));
INSTANTIATE_TEST_SUITE_P(OtherLengths, Accuracy,
                         testing::Values(3, 5, 7, 100, 1000, 10007, 65535, 65537, 100003, 1048577));
