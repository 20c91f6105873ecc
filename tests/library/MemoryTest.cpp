#include "tests/library/Handle.h"
#include "tests/support/FailingAllocator.h"

#include <fstream>

static std::int64_t residentPages() {
    std::int64_t total = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident;
}

// Sanitizers keep for a while what was freed; a leak of a single call they tell of by themselves,
// when the tests end.
static void expectNoGrowth(std::int64_t before) {
    if (FENDRA_INSTRUMENTED == 0) {
        EXPECT_LT(residentPages(), before + 64);
    }
}

// A leak of ten bytes in a call would take 244 pages.
TEST(LibraryMemory, StaysAsItIsOverManyCalls) {
    const Signal x = noise(16, 1), kernel = noise(4, 2);
    const Handle handle = openHandle({{"jobs", "1"}});
    std::int64_t before = 0;
    const int calls = FENDRA_INSTRUMENTED == 0 ? 100000 : 1000;
    for (int i = 0; i < calls; ++i) {
        const auto call = i % 2 == 0 ? fendra_convolve : fendra_deconvolve;
        ASSERT_EQ(FENDRA_OK, call(handle.get(), x.data(), x.size(), kernel.data(), 4));
        before = i == 1000 ? residentPages() : before;
    }
    expectNoGrowth(before);
}

TEST(LibraryMemory, HandlesAndRecordsGoWithAllThatTheyHeld) {
    std::int64_t before = 0;
    for (int i = 0; i < 200; ++i) {
        const Handle handle = openHandle({{"jobs", "1"}, {"method", "regularized"}});
        ASSERT_EQ(FENDRA_OK, run(handle, Direction::deconvolve, measured(), peak()));
        ASSERT_STRNE("", fendra_record(handle.get()));
        before = i == 20 ? residentPages() : before;
    }
    expectNoGrowth(before);
}

// Whatever allocation fails: the call says so or gives the whole result, nothing leaks, and the
// handle works on.
TEST(LibraryMemory, ExhaustedGivesNoHandle) {
    sweepAllocations([](const FailingAllocator& memory) {
        memory.arm();
        const Handle handle(fendra_open(nullptr));
        const bool failed = FailingAllocator::disarm();
        EXPECT_EQ(handle == nullptr, failed);
    });
}

TEST(LibraryMemory, ExhaustedLeavesOptionsAsTheyWere) {
    const Signal signal = lines(), kernel = peak();
    const Handle handle = openHandle({{"jobs", "1"}});
    // Then it has room for any message.
    EXPECT_EQ(FENDRA_BAD_ARGUMENT, fendra_set(handle.get(), std::string(100, 'x').c_str(), ""));
    sweepAllocations([&](const FailingAllocator& memory) {
        memory.arm();
        const int code = fendra_set(handle.get(), "pad", "");
        const bool failed = FailingAllocator::disarm();
        EXPECT_EQ(code, failed ? FENDRA_NO_MEMORY : FENDRA_OK);
        EXPECT_EQ(convolved(handle, signal, kernel).size(), failed ? 64U : 127U);
        EXPECT_EQ(FENDRA_OK, fendra_set(handle.get(), "pad", nullptr));
        convolved(handle, signal, kernel);
    });
}

TEST(LibraryMemory, ExhaustedIsSaidOfARun) {
    const Signal signal = lines(), kernel = peak();
    const Signal expected = convolved(openHandle({{"pad", ""}}), signal, kernel);
    sweepAllocations([&](const FailingAllocator& memory) {
        const Handle handle = openHandle({{"jobs", "1"}, {"pad", ""}});
        memory.arm();
        const int code = run(handle, Direction::convolve, signal, kernel);
        const bool failed = FailingAllocator::disarm();
        const std::string message = fendra_message(handle.get());
        // A module that could not be made gives null, and no reason.
        EXPECT_TRUE(code == FENDRA_OK || code == FENDRA_NO_MEMORY ||
                    message.ends_with("gave null)"))
            << message;
        EXPECT_EQ(code == FENDRA_OK, !failed) << message;
        EXPECT_EQ(fendra_length(handle.get()), failed ? 0U : expected.size());
        EXPECT_EQ(convolved(handle, signal, kernel), expected);
    });
}
