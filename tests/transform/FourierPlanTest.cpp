#include "transform/FourierPlan.h"

#include "tests/support/FailingAllocator.h"
#include "tests/support/PlainTransforms.h"
#include "tests/support/Signal.h"
#include "transform/ChirpPlan.h"
#include "transform/FourierTransform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <new>
#include <vector>

namespace {

struct Parts {
    Signal re, im;

    bool operator==(const Parts& other) const {
        return bits(re) == bits(other.re) && bits(im) == bits(other.im);
    }
};

}  // namespace

static void multiply(Parts& a, const Parts& b) {
    for (std::size_t k = 0; k < a.re.size(); ++k) {
        const double real = a.re[k] * b.re[k] - a.im[k] * b.im[k];
        a.im[k] = a.re[k] * b.im[k] + a.im[k] * b.re[k];
        a.re[k] = real;
    }
}

// The chirp-z transform step by step, each sign with a chirp and a spectrum of its own.
static Parts transformedInSteps(Parts x, int sign) {
    const auto n = static_cast<int>(x.re.size());
    const std::ptrdiff_t from = n, to = from + n;
    const auto m = static_cast<int>(FourierTransform::nextPowerOfTwo(2 * n));
    const auto size = static_cast<std::size_t>(m);
    Parts chirp = {Signal(size), Signal(size)};
    FourierTransform::makeChirp(chirp.re.data(), chirp.im.data(), n, m, sign);
    x.re.resize(size);
    x.im.resize(size);
    multiply(x, chirp);

    FourierTransform::extendChirp(chirp.re.data(), chirp.im.data(), n, m);
    Parts conjugate = chirp;
    std::transform(chirp.im.begin(), chirp.im.end(), conjugate.im.begin(), std::negate());
    plainHartleyComplex(conjugate.re, conjugate.im, +1);
    plainHartleyComplex(x.re, x.im, +1);
    multiply(x, conjugate);
    plainHartleyComplex(x.re, x.im, -1);

    multiply(x, chirp);
    Parts result = {{x.re.begin() + from, x.re.begin() + to},
                    {x.im.begin() + from, x.im.begin() + to}};
    for (Signal* part : {&result.re, &result.im}) {
        for (double& value : *part) {
            value *= sign > 0 ? 1.0 / n : 1.0;
        }
    }
    return result;
}

template <typename Plan>
static Parts transformed(Plan& plan, Parts x, int sign) {
    plan.transform(x.re.data(), x.im.data(), sign);
    return x;
}

template <typename Plan>
static void expectBits(Plan& plan, const Parts& x, const Parts& forward, const Parts& inverse) {
    EXPECT_TRUE(transformed(plan, x, +1) == inverse) << x.re.size();
    EXPECT_TRUE(transformed(plan, x, -1) == forward) << x.re.size();
    EXPECT_TRUE(transformed(plan, x, +1) == inverse) << x.re.size();
}

static Parts transformedAlone(Parts x, int sign) {
    FourierTransform().transform(x.re.data(), x.im.data(), static_cast<int>(x.re.size()), sign);
    return x;
}

// Signals whose transforms show the signs of zeros, and one that does not.
static std::vector<Parts> signalsOf(int n) {
    const auto size = static_cast<std::size_t>(n);
    Parts impulse = {Signal(size, -0.0), Signal(size)};
    impulse.im[size / 2] = -1.0;
    return {{Signal(size), Signal(size)},
            {Signal(size, -0.0), Signal(size, -0.0)},
            impulse,
            {noise(n, 1), noise(n, 2)}};
}

// One chirp and one spectrum serve both signs, in any order, without a trace in any bit. 5 and 1120
// have spectra with zeros, the longest whole passes over memory.
TEST(ChirpPlan, DoesTheOperationsOfTheSteps) {
    std::vector<int> lengths = {257, 500, 1000, 1023, 1120, 2049, 5000, 10007, 16385, 33000};
    for (int n = 1; n <= 140; ++n) {
        lengths.push_back(n);
    }
    for (const int n : lengths) {
        ChirpPlan plan(n);
        for (const Parts& x : signalsOf(n)) {
            expectBits(plan, x, transformedInSteps(x, -1), transformedInSteps(x, +1));
        }
    }
}

TEST(FourierPlan, GivesTheBitsOfTheTransformAlone) {
    for (const int n : {1, 2, 3, 4, 5, 64, 100, 1024, 1025}) {
        FourierPlan plan(n);
        for (const Parts& x : signalsOf(n)) {
            expectBits(plan, x, transformedAlone(x, -1), transformedAlone(x, +1));
        }
    }
}

TEST(FourierPlan, LengthsWithoutATransform) {
    FourierPlan(0).transform(nullptr, nullptr, -1);
    EXPECT_THROW(FourierPlan((1 << 29) + 1), std::bad_alloc);
}

// Whether it succeeds; a signal that it fails on stays as it was.
static bool transforms(Parts& x, int n) {
    try {
        FourierTransform().transform(x.re.data(), x.im.data(), n, -1);
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

// With five samples the spectrum has a zero, so that a second one needs memory.
TEST(FourierPlan, ExhaustedMemoryLeavesTheSignalAlone) {
    for (const int n : {3, 5, 1000}) {
        const Parts x = {noise(n, 1), noise(n, 2)}, expected = transformedAlone(x, -1);
        sweepAllocations([&](const FailingAllocator& memory) {
            Parts signal = x;
            memory.arm();
            const bool done = transforms(signal, n);
            EXPECT_NE(FailingAllocator::disarm(), done);
            EXPECT_TRUE(signal == (done ? expected : x)) << n;
        });
    }
}
