#include "transform/FourierTransform.h"

#include "tests/support/PlainTransforms.h"
#include "tests/support/Signal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <new>

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

namespace {

class FourierLengths : public testing::TestWithParam<int> {};

}  // namespace

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

INSTANTIATE_TEST_SUITE_P(BothPaths, FourierLengths,
                         testing::Values(1, 2, 3, 4, 5, 6, 7, 8, 9, 12, 15, 16, 17, 64, 100, 257,
                                         512, 1000));

TEST(FourierTransform, LeavesAloneWhatHasNoTransform) {
    double re = 3.5, im = -0.25;
    FourierTransform().transform(&re, &im, 0, -1);
    FourierTransform().transform(&re, &im, -7, 1);
    EXPECT_THROW(FourierTransform().transform(&re, &im, (1 << 29) + 1, -1), std::bad_alloc);
    EXPECT_TRUE(re == 3.5 && im == -0.25);
    EXPECT_EQ(FourierTransform::nextPowerOfTwo(-5), 1U);
    EXPECT_EQ(FourierTransform::nextPowerOfTwo((1 << 30) + 1), 1U << 31);
}

namespace {

class PowersOfTwo : public testing::TestWithParam<int> {};

}  // namespace

// The same bits as the plain loops: Hartley with and without normalising, complex Hartley in both
// senses.
TEST_P(PowersOfTwo, DoThePlainLoopsOperations) {
    const int n = GetParam();
    const Signal x = noise(n, 5), y = noise(n, 6);
    for (const int sign : {-1, 1}) {
        Signal re = x, im = y, plainRe = x, plainIm = y;
        FourierTransform().hartleyComplexTransform(re.data(), im.data(), n, sign);
        plainHartleyComplex(plainRe, plainIm, sign);
        const bool complex = bits(re) == bits(plainRe) && bits(im) == bits(plainIm);

        re = plainRe = x;
        HartleyTransform().hartley(re.data(), n, sign > 0 ? 1 : 0);
        plainHartley(plainRe, sign > 0);
        const bool real = bits(re) == bits(plainRe);
        EXPECT_TRUE(complex && real) << sign << ": " << complex << real;
    }
}

INSTANTIATE_TEST_SUITE_P(EveryStage, PowersOfTwo,
                         testing::Values(1, 2, 4, 8, 16, 32, 64, 128, 256, 512, 1024, 4096, 8192,
                                         131072, 1 << 20));

// The exponent and the normalisation sit the other way round than in transform.
TEST(HartleyComplexTransform, SensesOfAUnitImpulse) {
    Signal re = {0, 1, 0, 0}, im(4), inverseRe = re, inverseIm = im;
    FourierTransform().hartleyComplexTransform(re.data(), im.data(), 4, 0);
    FourierTransform().hartleyComplexTransform(inverseRe.data(), inverseIm.data(), 4, -1);
    EXPECT_TRUE(re[1] == 0.0 && im[1] == 1.0 && inverseRe[1] == 0.0 && inverseIm[1] == -0.25);
}
