#include "workbench/jobs/Gain.h"

#include "tests/support/SignalFiles.h"
#include "workbench/jobs/FoldJob.h"
#include "workbench/module/ModuleLibrary.h"
#include "workbench/signals/SampleDigest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <tuple>

TEST(Gain, IsThePowerOfTen) {
    for (int hundredths = -30000; hundredths <= 30000; hundredths += 37) {
        const double decibels = hundredths / 100.0;
        const long double expected = std::pow(10.0L, static_cast<long double>(decibels) / 20.0L);
        EXPECT_NEAR(factorOf(decibels) / static_cast<double>(expected), 1.0, 1e-15) << decibels;
    }
    EXPECT_EQ(factorOf(0.0), 1.0);
    EXPECT_EQ(factorOf(60.0), 1000.0);
    EXPECT_EQ(factorOf(-20.0), 0.1);
}

namespace {

class Unwatched final : public JobObserver {
public:
    void begins(const JobSize& /*size*/) override {}
    bool advances(const JobProgress& /*progress*/) override { return true; }
};

}  // namespace

// Two channels in blocks, so that the result comes in several pieces; a deconvolution has a band.
static FoldJob jobOf(const Gain& gain, std::int32_t direction) {
    Signal signal, kernel;
    signal.info.channels = 2;
    signal.info.samples = 100;
    for (int i = 0; i < 200; ++i) {
        signal.interleaved.push_back(std::exp(-(i - 80) * (i - 80) / 50.0) * (i % 2 == 0 ? 3 : -7));
    }
    kernel.info.channels = 1;
    kernel.info.samples = 2;
    kernel.interleaved = {0.75, 0.25};
    FoldJob job;
    job.first = job.truth.emplace(sourceOf(std::make_shared<const Signal>(signal)));
    job.second = sourceOf(std::make_shared<const Signal>(kernel));
    job.settings.direction = direction;
    if (direction == FendraSettings::deconvolution) {
        job.settings.method = FendraSettings::regularized;
        job.treatment.strength = 0.1;
        job.treatment.uncertainty = true;
    } else {
        job.cutting = {33, false, true};
    }
    job.gain = gain;
    return job;
}

static Outcome outcomeOf(const Gain& gain, std::int32_t direction) {
    static const ModuleLibrary library(ModuleLibrary::standardFile());
    Unwatched observer;
    return run(jobOf(gain, direction), library, observer);
}

// Of the values, which stand in every third column where a deconvolution has bounds.
static double peakOf(const Signal& result, std::int32_t direction) {
    const std::size_t columns = direction == FendraSettings::deconvolution ? 3 : 1;
    double peak = 0.0;
    for (std::size_t i = 0; i < result.interleaved.size(); i += columns) {
        peak = std::max(peak, std::abs(result.interleaved[i]));
    }
    return peak;
}

static std::vector<double> scaled(std::vector<double> values, const Gain& gain, double peak) {
    for (double& value : values) {
        value = gain.kind == Gain::Kind::normalize ? value / peak : value * factorOf(gain.decibels);
    }
    return values;
}

class GainOf : public testing::TestWithParam<std::tuple<std::int32_t, Gain::Kind>> {};

// Bounds are scaled by what makes the values, and only these, 1.0; all that the record says in
// units of the result goes along, and a comparison is that of the result as it was.
TEST_P(GainOf, ScalesEverySampleOnce) {
    const auto [direction, kind] = GetParam();
    const Gain gain{kind, -7.5};
    const bool normalizes = kind == Gain::Kind::normalize;
    const Outcome plain = outcomeOf({}, direction);
    const double peak = peakOf(plain.result, direction);
    const double factor = normalizes ? 1.0 / peak : factorOf(-7.5);
    const std::vector<double> expected = scaled(plain.result.interleaved, gain, peak);
    SampleDigest digest;
    digest.add(expected.data(), expected.size());

    const auto [result, record] = outcomeOf(gain, direction);
    EXPECT_TRUE(sameBits(result.interleaved, expected));
    EXPECT_EQ(record.digest, digest.hex());
    EXPECT_EQ(record.error->relativeError, plain.record.error->relativeError);
    EXPECT_NEAR(record.gain->decibels, 20.0 * std::log10(factor), 1e-12);
    EXPECT_EQ(std::max(record.maximum, -record.minimum) == 1.0, normalizes);
    const UncertaintyRecord none;
    EXPECT_NEAR(record.uncertainty.value_or(none).halfWidth,
                plain.record.uncertainty.value_or(none).halfWidth * factor, 1e-15);
}
INSTANTIATE_TEST_SUITE_P(
    EachWay, GainOf,
    testing::Combine(testing::Values(FendraSettings::convolution, FendraSettings::deconvolution),
                     testing::Values(Gain::Kind::decibels, Gain::Kind::normalize)));
