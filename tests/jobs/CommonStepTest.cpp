#include "workbench/jobs/CommonStep.h"

#include "tests/support/SignalFiles.h"

#include <gtest/gtest.h>

namespace {

// A signal with an axis, a rate, or neither.
struct Known {
    const char* name;
    double rate = 0.0;
    double step = 0.0, lowest = 0.0, highest = 0.0;  // of an axis; 0: none
};

struct StepCase {
    Known first, second;
    double given = 0.0;
    double rate = 0.0, step = 0.0;  // that should come out
    std::string refusal = {};       // part of it; then nothing does
};

class CommonSteps : public testing::TestWithParam<StepCase> {};

}  // namespace

static SignalInfo infoOf(const Known& known) {
    SignalInfo info;
    info.source = SourceName(known.name);
    info.rate = known.rate;
    if (known.step != 0.0) {
        info.axis = SignalAxis{"x", 0.0, known.step, known.rate > 0.0, known.lowest, known.highest};
    }
    return info;
}

TEST_P(CommonSteps, AreThoseThatFitBothSignals) {
    const StepCase& expected = GetParam();
    CommonStep found;
    const std::string refusal = failureOf([&] {
        found = commonStep(infoOf(expected.first), infoOf(expected.second), expected.given);
    });
    EXPECT_EQ(refusal.empty(), expected.refusal.empty()) << refusal;
    EXPECT_NE(refusal.find(expected.refusal), std::string::npos) << refusal;
    EXPECT_EQ(found.rate, expected.rate);
    EXPECT_EQ(found.step, expected.step);
}

static const Known none{"none"}, audio{"a.wav", 8.0}, exact{"e.csv", 8.0, 0.125, 0.125, 0.125},
    rounded{"r.csv", 10.0, 0.1, 0.09, 0.13}, falling{"f.csv", 8.0, -0.125, 0.125, 0.125},
    counted{"c.csv", 0.0, 1.0, 1.0, 1.0}, nanometres{"n.csv", 0.0, 0.5, 0.45, 0.55},
    coarse{"o.csv", 0.0, 0.6, 0.5, 0.7}, far{"u.csv", 0.0, 0.625, 0.6, 0.65};

INSTANTIATE_TEST_SUITE_P(
    Agreeing, CommonSteps,
    testing::Values(
        StepCase{none, none}, StepCase{none, none, 5.0, 5.0, 0.2},
        StepCase{none, falling, 0.0, 8.0, -0.125}, StepCase{nanometres, none, 0.0, 0.0, 0.5},
        StepCase{rounded, audio, 0.0, 8.0, 0.125}, StepCase{exact, rounded, 0.0, 8.0, 0.125},
        StepCase{audio, exact, 0.0, 8.0, 0.125}, StepCase{rounded, none, 10.5, 10.5, 1 / 10.5},
        StepCase{falling, falling, 8.0, 8.0, -0.125}, StepCase{nanometres, coarse, 0.0, 0.0, 0.5},
        StepCase{counted, audio, 0.0, 8.0, 0.125}, StepCase{audio, counted, 0.0, 8.0, 0.125},
        StepCase{counted, exact, 8.0, 8.0, 0.125}, StepCase{counted, none, 5.0, 5.0, 0.2}));
// The better known step does not fit the other signal; the next that does is taken.
INSTANTIATE_TEST_SUITE_P(
    AtTheEdge, CommonSteps,
    testing::Values(StepCase{
        {"p", 0.0, 0.5, 0.4, 0.6}, {"q", 0.0, 0.65, 0.58, 0.72}, 0.0, 0.0, 0.6}));
INSTANTIATE_TEST_SUITE_P(
    Refused, CommonSteps,
    testing::Values(
        StepCase{audio,
                 {"b.wav", 8.1},
                 0,
                 0,
                 0,
                 "a.wav is sampled at 8 Hz and b.wav at 8.1 Hz; resample"},
        StepCase{nanometres, far, 0, 0, 0, "n.csv is spaced by 0.5 and u.csv by 0.625; resample"},
        StepCase{nanometres, counted, 8, 0, 0, "n.csv is spaced by 0.5 and c.csv by 1; resample"},
        StepCase{exact, falling, 0, 0, 0,
                 "the axis of f.csv falls and that of e.csv rises; reverse"},
        StepCase{nanometres, audio, 0, 0, 0, "n.csv is spaced by 0.5 and a.wav is sampled at 8 Hz"},
        StepCase{exact, counted, 0, 0, 0, "only one of these is a time"},
        StepCase{none, rounded, 7.5, 0, 0, "--rate 7.5 contradicts 10 Hz in r.csv; leave it out"}));
