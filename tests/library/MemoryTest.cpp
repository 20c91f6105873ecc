#include "tests/library/Handle.h"
#include "tests/support/FailingAllocator.h"

#include <fstream>

static std::int64_t residentPages() {
    std::int64_t total = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident;
}

// 100 000 calls with a leak of ten bytes each would take 244 pages more.
TEST(LibraryMemory, StaysAsItIsOverManyCalls) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    constexpr int calls = 500;
#else
    constexpr int calls = 100000;
#endif
    const Signal x = noise(16, 1), kernel = noise(4, 2);
    const Handle handle = openHandle({{"jobs", "1"}});
    const auto repeat = [&](int times) {
        for (int i = 0; i < times; ++i) {
            const auto call = i % 2 == 0 ? fendra_convolve : fendra_deconvolve;
            ASSERT_EQ(FENDRA_OK, call(handle.get(), x.data(), x.size(), kernel.data(), 4));
        }
    };
    repeat(calls / 10);
    const std::int64_t before = residentPages();
    repeat(calls);
    EXPECT_LT(residentPages(), before + 64);
}

TEST(LibraryMemory, HandlesAndRecordsGoWithAllThatTheyHeld) {
    const auto once = [] {
        const Handle handle = openHandle({{"jobs", "1"}, {"method", "regularized"}});
        ASSERT_EQ(FENDRA_OK, run(handle, Direction::deconvolve, measured(), peak()))
            << fendra_message(handle.get());
        ASSERT_STRNE("", fendra_record(handle.get()));
    };
    for (int i = 0; i < 20; ++i) {
        once();
    }
    const std::int64_t before = residentPages();
    for (int i = 0; i < 200; ++i) {
        once();
    }
    EXPECT_LT(residentPages(), before + 64);
}

// Whatever allocation fails: the call says so or gives the whole result, nothing leaks, and the
// handle works on.
TEST(LibraryMemory, ExhaustedIsACodeAndLeavesTheHandleWhole) {
    const Signal signal = lines(), kernel = peak();
    const Signal expected = convolved(openHandle({{"pad", ""}}), signal, kernel);
    sweepAllocations([&](const FailingAllocator& memory) {
        memory.arm();
        Handle handle(fendra_open(nullptr));
        const bool opened = FailingAllocator::disarm();
        EXPECT_EQ(handle == nullptr, opened);
    });
    sweepAllocations([&](const FailingAllocator& memory) {
        const Handle handle = openHandle({{"jobs", "1"}});
        memory.arm();
        const int set = fendra_set(handle.get(), "pad", "");
        const bool failed = FailingAllocator::disarm();
        EXPECT_EQ(set, failed ? FENDRA_NO_MEMORY : FENDRA_OK);
        EXPECT_EQ(convolved(handle, signal, kernel).size(), failed ? 64U : 127U);
    });
    sweepAllocations([&](const FailingAllocator& memory) {
        const Handle handle = openHandle({{"jobs", "1"}, {"pad", ""}});
        memory.arm();
        const int ran = run(handle, Direction::convolve, signal, kernel);
        const bool failed = FailingAllocator::disarm();
        const std::string message = fendra_message(handle.get());
        if (ran == FENDRA_OK) {  // what failed was a remark
            EXPECT_EQ(resultOf(handle), expected);
        } else {
            EXPECT_TRUE(failed && fendra_length(handle.get()) == 0);
            EXPECT_TRUE(ran == FENDRA_NO_MEMORY || message.ends_with("gave null)")) << message;
        }
        EXPECT_EQ(convolved(handle, signal, kernel), expected);
    });
}
