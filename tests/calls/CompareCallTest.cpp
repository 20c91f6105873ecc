#include "workbench/calls/CompareCall.h"

#include "tests/calls/samples.h"
#include "workbench/calls/FoldCall.h"
#include "workbench/jobs/JobObserver.h"
#include "workbench/messages/Failure.h"
#include "workbench/methods/FendraSettings.h"
#include "workbench/methods/Method.h"

#include <gtest/gtest.h>

#include <limits>

// Of each method, with what it is given in a comparison.
static Samples alone(const std::string& method, const Samples& signal, const Samples& kernel) {
    CallOptions options = {{"method", method}};
    if (method == "van-cittert") {
        options.push_back({"max-iterations", "12"});
    } else if (method == "regularized") {
        options.push_back({"strength", "0.01"});
    }
    JobObserver observer;
    return FoldCall(fendra(), FendraSettings::deconvolution, options)
        .run(signalOf(signal), signalOf(kernel), observer)
        .value;
}

static double relativeError(const Samples& samples, const Samples& truth) {
    double differences = 0.0, squares = 0.0;
    for (std::size_t i = 0; i < truth.size(); ++i) {
        differences += (samples[i] - truth[i]) * (samples[i] - truth[i]);
        squares += truth[i] * truth[i];
    }
    return std::sqrt(differences / squares);
}

TEST(CompareCall, GivesWhatEachMethodGivesAlone) {
    const Samples signal = noise(96, 1), kernel = peak(96), truth = noise(96, 2);
    const CallSignal known = signalOf(truth, 1, "truth");
    JobObserver observer;
    const auto outcomes = CompareCall(fendra(), {{"max-iterations", "12"}, {"strength", "0.01"}})
                              .run(signalOf(signal), signalOf(kernel), &known, observer);
    ASSERT_EQ(outcomes.size(), 4U);
    for (const MethodOutcome& outcome : outcomes) {
        const std::string method = outcome.method->word;
        const Samples expected = alone(method, signal, kernel);
        EXPECT_EQ(outcome.result.interleaved, expected) << method << outcome.failure;
        const double error = outcome.record.error.value_or(TruthError()).relativeError;
        EXPECT_NEAR(error / relativeError(expected, truth), 1.0, 1e-12);
    }
}

TEST(CompareCall, RunsTheMethodsThatAreNamedInTheirOrder) {
    const Samples signal = noise(96, 1), kernel = peak(33);
    JobObserver observer;
    const auto outcomes = CompareCall(fendra(), {{"methods", "pseudo-inverse,spectral"}})
                              .run(signalOf(signal), signalOf(kernel), nullptr, observer);
    ASSERT_EQ(outcomes.size(), 2U);
    EXPECT_NE(outcomes[0].failure.find("equal lengths"), std::string::npos);
    EXPECT_TRUE(outcomes[0].result.interleaved.empty());
    EXPECT_EQ(outcomes[1].result.interleaved.size(), 96U);
    EXPECT_FALSE(outcomes[1].record.error);
    EXPECT_NE(tableOf(outcomes, false).find("\nspectral "), std::string::npos);
    EXPECT_NE(recordOf(outcomes).find("\"method\": \"spectral\""), std::string::npos);
}

TEST(CompareCall, RefusesAnyOfItsSignals) {
    const Samples good = noise(16, 3);
    Samples odd = good;
    odd[3] = -std::numeric_limits<double>::infinity();
    const CompareCall call(fendra(), {});
    for (const int place : {0, 1, 2}) {
        const auto at = [&](int i, const char* name) {
            return signalOf(i == place ? odd : good, 1, name);
        };
        const CallSignal truth = at(2, "truth");
        JobObserver observer;
        try {
            static_cast<void>(call.run(at(0, "signal"), at(1, "kernel"), &truth, observer));
            ADD_FAILURE() << place;
        } catch (const Failure& failure) {
            EXPECT_NE(std::string(failure.what()).find("sample 4 is -inf"), std::string::npos);
        }
    }
}
