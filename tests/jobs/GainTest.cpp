#include "workbench/jobs/Gain.h"

#include "tests/support/SignalFiles.h"
#include "workbench/jobs/FoldJob.h"
#include "workbench/module/ModuleLibrary.h"
#include "workbench/signals/SampleDigest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

TEST(Gain, IsThePowerOfTen) {
    const auto ten = 10.0L;
    for (double decibels = -300.0; decibels <= 300.0; decibels += 0.37) {
        const auto expected = static_cast<double>(std::pow(ten, decibels / 20.0L));
        EXPECT_NEAR(factorOf(decibels) / expected, 1.0, 1e-15) << decibels;
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
        job.cutting.block = 33;
    }
    job.gain = gain;
    return job;
}

static Outcome outcomeOf(const Gain& gain, std::int32_t direction) {
    static const ModuleLibrary library(ModuleLibrary::standardFile());
    Unwatched observer;
    return run(jobOf(gain, direction), library, observer);
}

// Bounds are scaled by what makes the values, and only these, 1.0; all that the record says in
// units of the result goes along, and a comparison is that of the result as it was.
TEST(Gain, ScalesEverySampleOnce) {
    for (const std::int32_t direction :
         {FendraSettings::convolution, FendraSettings::deconvolution}) {
        const Outcome plain = outcomeOf({}, direction);
        const std::size_t step = direction == FendraSettings::convolution ? 1 : 3;
        double peak = 0.0;
        for (std::size_t i = 0; i < plain.result.interleaved.size(); i += step) {
            peak = std::max(peak, std::abs(plain.result.interleaved[i]));
        }
        for (const Gain& gain :
             {Gain{Gain::Kind::decibels, -7.5}, Gain{Gain::Kind::normalize, 0.0}}) {
            const bool normalizes = gain.kind == Gain::Kind::normalize;
            std::vector<double> expected = plain.result.interleaved;
            for (double& value : expected) {
                value = normalizes ? value / peak : value * factorOf(-7.5);
            }
            const auto [result, record] = outcomeOf(gain, direction);
            EXPECT_TRUE(sameBits(result.interleaved, expected));
            SampleDigest digest;
            digest.add(expected.data(), expected.size());
            EXPECT_EQ(record.digest, digest.hex());
            EXPECT_EQ(record.error->relativeError, plain.record.error->relativeError);
            const double factor = normalizes ? 1.0 / peak : factorOf(-7.5);
            EXPECT_NEAR(record.gain->decibels, 20.0 * std::log10(factor), 1e-12);
            EXPECT_EQ(std::max(record.maximum, -record.minimum) == 1.0, normalizes);
            if (step == 3) {
                EXPECT_NEAR(record.uncertainty->halfWidth,
                            plain.record.uncertainty->halfWidth * factor, 1e-15);
            }
        }
    }
}
