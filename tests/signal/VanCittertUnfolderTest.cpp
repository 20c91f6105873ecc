#include "signal/VanCittertUnfolder.h"

#include "tests/support/Guarded.h"
#include "tests/support/Signal.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

static constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

namespace {

struct Iteration {
    Signal signal, kernel;
    double convergence = 1.0;
    std::uint32_t maxIterations = 100;
    bool abortAtError = false;
    double errorValue = 0.01;
    bool abortAtMinError = true;
};

struct Outcome {
    Signal result;
    double lastError;
    std::uint32_t loopCount;
};

}  // namespace

static VanCittertUnfolder unfolderOf(const Iteration& run) {
    return {run.convergence, run.maxIterations, run.abortAtError ? 1 : 0, run.errorValue,
            run.abortAtMinError ? 1 : 0};
}

static Outcome unfold(const Iteration& run, VanCittertUnfolder unfolder) {
    Guarded result(run.signal.size());
    EXPECT_EQ(1, unfolder.unfold(run.signal.data(), static_cast<int>(run.signal.size()),
                                 run.kernel.data(), static_cast<int>(run.kernel.size()),
                                 result.data(), result.size()));
    return {result.values(), unfolder.lastError, unfolder.loopCount};
}

static Outcome unfold(const Iteration& run) {
    return unfold(run, unfolderOf(run));
}

// The residual of an estimate replaces e; its squares are summed in order.
static double residual(const Iteration& run, const Signal& estimate, Signal& e) {
    const Signal model = laggingFold(estimate, run.kernel);
    double sum = 0.0;
    for (std::size_t i = 0; i < e.size(); ++i) {
        e[i] = run.signal[i] - model[i];
        sum += e[i] * e[i];
    }
    return sum;
}

// The iteration, written down from its steps.
static Outcome plainUnfold(const Iteration& run) {
    Signal x(run.signal.size()), e(x);
    Outcome outcome{x, residual(run, x, e), 1};
    const Signal reversed(run.kernel.rbegin(), run.kernel.rend());
    while (outcome.loopCount < run.maxIterations) {
        Signal t = laggingFold(e, reversed);
        for (std::size_t i = 0; i < t.size(); ++i) {
            t[i] = t[i] * run.convergence + outcome.result[i];
        }
        const double error = residual(run, t, e);
        const bool greater = error > outcome.lastError;
        if (run.abortAtMinError && greater) {
            break;
        }
        outcome = {t, error, outcome.loopCount + 1};
        if (run.abortAtError && (error <= run.errorValue || std::isnan(error))) {
            break;
        }
    }
    return outcome;
}

static void expectSameBits(const Outcome& outcome, const Outcome& expected) {
    EXPECT_EQ(bits(outcome.result), bits(expected.result));
    EXPECT_EQ(bits({outcome.lastError}), bits({expected.lastError}));
    EXPECT_EQ(outcome.loopCount, expected.loopCount);
}

TEST(VanCittertUnfolder, HandWorkedRuns) {
    const Signal impulse = {1, 0, 0, 0};
    struct Row {
        Iteration run;
        Outcome expected;
    };
    const Row table[] = {
        {{impulse, impulse}, {{0, 0, 0, 0}, 1, 1}},  // the first step raises the error: dropped
        {{impulse, impulse, 1.0, 3, false, 0.01, false}, {{2, -1, 0, 0}, 6, 3}},
        {{impulse, impulse, 1.0, 1, true, 5.0}, {{0, 0, 0, 0}, 1, 1}},  // tested after a step only
        {{impulse, impulse, 1.0, 9, true, 5.0, false}, {{1, 0, 0, 0}, 2, 2}},
        {{impulse, impulse, 0.0, 7}, {{0, 0, 0, 0}, 1, 7}},  // equal errors are accepted
        {{{}, {}, 1.0, 5}, {{}, 0, 5}},
        {{{3, 5}, {}, 1.0, 4}, {{0, 0}, 34, 4}}};
    for (const auto& [run, expected] : table) {
        expectSameBits(unfold(run), expected);
    }
    // An error that is not a number counts as small: its step is kept, and ends the run.
    const Outcome odd = unfold({{1, notANumber}, {1, 0}, 1.0, 9, true, 0.5, true});
    EXPECT_TRUE(odd.loopCount == 2 && std::isnan(odd.lastError));
}

TEST(VanCittertUnfolder, DoesThePlainLoopsOperations) {
    for (const auto& [n, m] : {std::pair{5, 5}, {40, 40}, {40, 7}, {33, 32}}) {
        Signal kernel = noise(m, 2);
        for (double& sample : kernel) {
            sample = std::abs(sample) / m;
        }
        const Signal y = noise(n, 1);
        for (const double convergence : {1.0, 0.3, 40.0}) {
            for (const bool minimum : {true, false}) {
                const Iteration run{y, kernel, convergence, 25, true, minimum ? 2.0 : 0.0, minimum};
                expectSameBits(unfold(run), plainUnfold(run));
            }
        }
    }
}

// Expects the result to be what was shown last.
static Outcome watch(const Iteration& run, const std::function<bool(std::uint32_t loop)>& answer) {
    VanCittertUnfolder unfolder = unfolderOf(run);
    std::uint32_t due = 2;
    double shownError = 0.0;
    Signal shown;
    unfolder.keepGoing = [&](std::uint32_t loop, double error, const double* estimate) {
        EXPECT_EQ(loop, due++);
        shownError = error;
        shown.assign(estimate, estimate + run.signal.size());
        return answer(loop);
    };
    Outcome outcome = unfold(run, unfolder);
    EXPECT_EQ(bits({outcome.lastError}), bits({shownError}));
    EXPECT_EQ(bits(outcome.result), bits(shown));
    return outcome;
}

// Each kept step is shown. Where the answer is to stop, or the question throws, the run is the one
// that the bound on the loop count would have ended there, bit for bit.
TEST(VanCittertUnfolder, IsWatchedAndStopped) {
    const auto bounded = [](std::uint32_t most) {
        return Iteration{noise(20, 1), Signal(20, 0.05), 1.0, most, false, 0.0, false};
    };
    const Iteration run = bounded(9);
    expectSameBits(watch(run, [](std::uint32_t /*loop*/) { return true; }), unfold(run));
    expectSameBits(watch(run, [](std::uint32_t loop) { return loop < 5; }), unfold(bounded(5)));
    expectSameBits(watch(run, [](std::uint32_t /*loop*/) -> bool { throw 1; }), unfold(bounded(2)));
}

// A refused run would fall over the missing result array if it wrote to it.
TEST(VanCittertUnfolder, RefusedLengthsLeaveEverythingAlone) {
    const Signal data(9, 1.0);
    VanCittertUnfolder unfolder(1.0, 9, 0, 0.0, 1);
    unfolder.lastError = 7.0;
    unfolder.loopCount = 7;
    EXPECT_EQ(0, unfolder.unfold(data.data(), 4, data.data(), 5, nullptr, 4));
    EXPECT_EQ(0, unfolder.unfold(data.data(), 4, data.data(), 3, nullptr, 5));
    EXPECT_TRUE(unfolder.lastError == 7.0 && unfolder.loopCount == 7);
}
