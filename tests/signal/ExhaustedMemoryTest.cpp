#include "signal/FoldEngine.h"
#include "signal/PseudoInverseUnfolder.h"
#include "signal/SpectralUnfolder.h"
#include "signal/VanCittertUnfolder.h"
#include "tests/support/FailingAllocator.h"
#include "tests/support/Signal.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>

// What every operation of the layer promises: 0, with the caller's array and the result fields as
// they were.

// Each runs on two signals, and gives 5 more than its result where the fields have changed.
using Operation = std::function<int(const Signal& a, const Signal& b, Signal& result)>;

template <typename Unfolder>
static int unfold(Unfolder unfolder, const Signal& a, const Signal& b, Signal& result) {
    const int n = static_cast<int>(a.size());
    return unfolder.unfold(a.data(), n, b.data(), n, result.data(), n);
}

template <int mode>
static int fold(const Signal& a, const Signal& b, Signal& result) {
    const int n = static_cast<int>(a.size());
    return FoldEngine().fold(a.data(), n, b.data(), n, result.data(), n, mode);
}

static const std::pair<const char*, Operation> operations[] = {
    {"time", fold<0>},
    {"frequency", fold<1>},
    {"spectral", [](const Signal& a, const Signal& b,
                    Signal& result) { return unfold(SpectralUnfolder(), a, b, result); }},
    {"van Cittert",
     [](const Signal& a, const Signal& b, Signal& result) {
         VanCittertUnfolder unfolder(0.1, 4, 0, 0.0, 0);
         unfolder.loopCount = 7;
         const int outcome = unfold<VanCittertUnfolder&>(unfolder, a, b, result);
         return outcome == 1 || unfolder.loopCount == 7 ? outcome : outcome + 5;
     }},
    {"pseudo-inverse",
     [](const Signal& a, const Signal& b, Signal& result) {
         PseudoInverseUnfolder unfolder(2);
         const int outcome = unfold<PseudoInverseUnfolder&>(unfolder, a, b, result);
         return outcome == 1 || unfolder.oneDeviation == 0.0 ? outcome : outcome + 5;
     }},
};

TEST(ExhaustedMemory, GivesZeroAndLeavesTheResultAlone) {
    for (const auto& [name, operation] : operations) {
        for (const int n : {16, 17}) {  // radix 2 and chirp
            sweepAllocations([&, &run = operation, text = name](const FailingAllocator& memory) {
                const Signal a = noise(n, 1), b = noise(n, 2), before(a.size(), 5.0);
                Signal result = before;
                memory.arm();
                const int outcome = run(a, b, result);
                const bool failed = FailingAllocator::disarm();
                EXPECT_EQ(outcome, failed ? 0 : 1) << text;
                EXPECT_EQ(failed, result == before) << text;
            });
        }
    }
}
