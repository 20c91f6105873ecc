#include "signal/KeptPlan.h"

#include "signal/FoldEngine.h"
#include "signal/SpectralUnfolder.h"
#include "tests/support/FailingAllocator.h"
#include "tests/support/Signal.h"

#include <gtest/gtest.h>

static Signal run(FoldEngine& engine, const Signal& a, const Signal& b) {
    const int n = static_cast<int>(a.size()), m = static_cast<int>(b.size());
    Signal result(a.size());
    EXPECT_EQ(engine.fold(a.data(), n, b.data(), m, result.data(), n, 1), 1);
    return result;
}

static Signal run(SpectralUnfolder& unfolder, const Signal& a, const Signal& b) {
    const int n = static_cast<int>(a.size()), m = static_cast<int>(b.size());
    Signal result(a.size());
    EXPECT_EQ(unfolder.unfold(a.data(), n, b.data(), m, result.data(), n), 1);
    return result;
}

template <typename Algorithm>
static Signal runAlone(const Signal& a, const Signal& b) {
    Algorithm fresh;
    return run(fresh, a, b);
}

// An object that lives through runs of changing lengths, one with a plan from outside, and a copy
// give the bits of an object for each run.
template <typename Algorithm>
static void expectSameBits(KeptPlan& shared) {
    Algorithm kept, sharing;
    sharing.keptPlan = &shared;
    for (const int n : {5, 5, 12, 16, 1000, 1000, 16, 5}) {
        const Signal a = noise(n, 1), b = noise(n - 2, 2);
        const auto expected = bits(runAlone<Algorithm>(a, b));
        EXPECT_EQ(bits(run(kept, a, b)), expected) << n;
        EXPECT_EQ(bits(run(sharing, a, b)), expected) << n;
        Algorithm copy = kept;
        EXPECT_EQ(bits(run(copy, a, b)), expected) << n;
    }
}

TEST(KeptPlan, ShowsInNoBit) {
    KeptPlan plan;
    expectSameBits<FoldEngine>(plan);
    expectSameBits<SpectralUnfolder>(plan);
}

static void runWithoutMemory(const FailingAllocator& memory, int next) {
    FoldEngine engine;
    run(engine, noise(100, 1), noise(100, 2));
    const Signal a = noise(next, 1), before(a.size(), 5.0);
    Signal result = before;
    memory.arm();
    const int outcome = engine.fold(a.data(), next, a.data(), next, result.data(), next, 1);
    const bool failed = FailingAllocator::disarm();
    EXPECT_EQ(outcome, failed ? 0 : 1);
    EXPECT_EQ(failed, result == before);
    EXPECT_EQ(bits(run(engine, a, a)), bits(runAlone<FoldEngine>(a, a)));
}

// A run that gets no memory, at the length of the kept plan or at another one, fails; the next one
// gives what it always gives.
TEST(KeptPlan, SurvivesExhaustedMemory) {
    for (const int next : {100, 60}) {
        sweepAllocations(
            [next](const FailingAllocator& memory) { runWithoutMemory(memory, next); });
    }
}
