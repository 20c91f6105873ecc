#include "tests/library/Handle.h"

#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <thread>

namespace {

// A call that is refused, with that code and a message that holds the reason.
struct Refusal {
    int (*call)(fendra*);
    int code;
    const char* reason;
};

}  // namespace

static constexpr std::size_t most = std::numeric_limits<std::size_t>::max();
static const double x[] = {1.0, 2.0, 3.0}, odd[] = {1.0, std::nan(""), -HUGE_VAL};
static const Refusal refusals[] = {
    {[](fendra* h) { return fendra_convolve(h, nullptr, 3, x, 3); }, 1, "signal has no samples"},
    {[](fendra* h) { return fendra_convolve(h, x, 3, nullptr, 3); }, 1, "kernel has no samples"},
    {[](fendra* h) { return fendra_convolve(h, x, 0, x, 3); }, 1, "signal has no samples"},
    {[](fendra* h) { return fendra_deconvolve(h, x, 3, x, 0); }, 1, "kernel has no samples"},
    {[](fendra* h) { return fendra_convolve(h, x, most, x, 3); }, 1, "than memory can hold"},
    {[](fendra* h) { return fendra_convolve(h, x, most / 8, x, 3); }, 1, "signal: "},
    {[](fendra* h) { return fendra_deconvolve(h, x, 3, x, most / 2 + 4); }, 1, "kernel: "},
    {[](fendra* h) { return fendra_convolve_channels(h, x, 3, 0, x, 3, 1); }, 1, "no samples"},
    {[](fendra* h) { return fendra_convolve_channels(h, x, 1, most, x, 3, 1); }, 1, "channels"},
    {[](fendra* h) { return fendra_convolve_channels(h, x, 8, most / 4, x, 3, 1); }, 1, "signal"},
    {[](fendra* h) { return fendra_convolve_channels(h, x, 1, 2, x, 1, 3); }, 4, "channels"},
    {[](fendra* h) { return fendra_convolve(h, odd, 3, x, 3); }, 1, "signal: sample 2 is nan"},
    {[](fendra* h) { return fendra_deconvolve(h, x, 3, odd + 2, 1); }, 1,
     "kernel: sample 1 is -inf"},
    {[](fendra* h) { return fendra_set(h, nullptr, "1"); }, 1, "null"},
    {[](fendra* h) { return fendra_set(h, "", ""); }, 1, "\"\" is not an option"},
    {[](fendra* h) { return fendra_set(h, "domian", "time"); }, 1, "did you mean domain?"},
    {[](fendra* h) { return fendra_set(h, "--pad", ""); }, 1, "without dashes"},
    {[](fendra* h) { return fendra_set(h, "pad --jobs", "2"); }, 1, "not an option"},
    {[](fendra* h) { return fendra_set(h, "help", ""); }, 1, "not an option"},
    {[](fendra* h) { return fendra_set(h, "output", "x"); }, 1, "not an option"},
    {[](fendra* h) { return fendra_set(h, "unknown", nullptr); }, 1, "not an option"},
    {[](fendra* h) { return fendra_set(h, "\n\xff", ""); }, 1, "\"??\""},
    {[](fendra* h) { return fendra_set(h, "domain", "tme"); }, 1, "did you mean time?"},
    {[](fendra* h) { return fendra_set(h, "method", ""); }, 1, "needs a value"},
    {[](fendra* h) { return fendra_set(h, "rate", "-1"); }, 1, "sampling rate"},
    {[](fendra* h) { return fendra_set(h, "max-iterations", "\n--pad"); }, 1, "max-iterations"},
    {[](fendra* h) { return fendra_band(h, nullptr, nullptr); }, 1, "null"},
    {[](fendra* h) { return *fendra_record(h) == '\0' ? 1 : 0; }, 1, "no result"},
};

static void expectSays(fendra* handle, const std::string& reason) {
    const std::string message = fendra_message(handle);
    EXPECT_NE(message.find(reason), std::string::npos) << message;
    EXPECT_EQ(message.find('\n'), std::string::npos) << message;
}

TEST(LibraryHandle, RefusesArgumentsThatCannotBeUsed) {
    const Handle handle = openHandle();
    for (const Refusal& refusal : refusals) {
        EXPECT_EQ(refusal.code, refusal.call(handle.get())) << refusal.reason;
        expectSays(handle.get(), refusal.reason);
        EXPECT_EQ(0U, fendra_length(handle.get()));
    }
    EXPECT_EQ(convolved(handle, lines(), peak()), convolved(openHandle(), lines(), peak()));
}

TEST(LibraryHandle, AnswersEndlessWordsInOneLine) {
    const Handle handle = openHandle();
    const std::string word(100000, 'x');
    EXPECT_EQ(FENDRA_BAD_ARGUMENT, fendra_set(handle.get(), word.c_str(), ""));
    EXPECT_LT(std::string(fendra_message(handle.get())).size(), 600U);
    EXPECT_EQ(FENDRA_BAD_ARGUMENT, fendra_set(handle.get(), "domain", word.c_str()));
    EXPECT_LT(std::string(fendra_message(handle.get())).size(), 600U);
}

// Every call, on a handle that is not one.
static void expectRefused(fendra* handle, const std::string& reason) {
    const double *lower = x, *upper = x;
    const std::vector<int> codes = {fendra_set(handle, "pad", ""),
                                    fendra_convolve(handle, x, 3, x, 3),
                                    fendra_deconvolve(handle, x, 3, x, 3),
                                    fendra_convolve_channels(handle, x, 1, 2, x, 3, 1),
                                    fendra_deconvolve_channels(handle, x, 1, 2, x, 3, 1),
                                    fendra_band(handle, &lower, &upper)};
    EXPECT_EQ(codes, std::vector<int>(codes.size(), FENDRA_BAD_ARGUMENT));
    EXPECT_TRUE(lower == x && upper == x);
    EXPECT_EQ(0U, fendra_length(handle) + fendra_channels(handle));
    EXPECT_EQ(nullptr, fendra_result(handle));
    EXPECT_STREQ("", fendra_record(handle));
    fendra_observe(handle, nullptr, nullptr);
    fendra_close(handle);
    expectSays(handle, reason);
}

TEST(LibraryHandle, IsRefusedWhereItIsNullOrClosed) {
    expectRefused(nullptr, "is null");
    const Handle before = openHandle(), after = openHandle();
    fendra* const closed = openHandle().release();
    fendra_close(closed);
    expectRefused(closed, "is closed");
    expectRefused(closed, "is closed");
    convolved(before, lines(), peak());
    convolved(after, lines(), peak());
}

TEST(LibraryHandle, SaysWhyItsModuleCannotBeOpened) {
    const TemporaryFolder folder;
    const std::string text = folder.write("text.so", "no library");
    for (const std::string& file : {folder.path("none.so"), text, folder.path(""), std::string()}) {
        const Handle handle(fendra_open(file.c_str()));
        const std::string reason = fendra_message(handle.get());
        EXPECT_NE(reason.find(file), std::string::npos) << reason;
        EXPECT_EQ(FENDRA_FAILED, fendra_set(handle.get(), "pad", ""));
        EXPECT_EQ(FENDRA_FAILED, run(handle, Direction::convolve, lines(), peak()));
        EXPECT_EQ(fendra_message(handle.get()), reason);
    }
}

TEST(LibraryHandle, KeepsItsOptionsUntilTheyAreTakenBack) {
    const Signal plain = convolved(openHandle(), lines(), peak());
    const Handle handle = openHandle({{"method", "van-cittert"}, {"pad", ""}});
    // A method, which a convolution does not have, is left out of it.
    EXPECT_EQ(127U, convolved(handle, lines(), peak()).size());
    EXPECT_EQ(FENDRA_BAD_ARGUMENT, fendra_set(handle.get(), "pad", "perhaps"));
    EXPECT_EQ(127U, fendra_length(handle.get()));
    EXPECT_EQ(127U, convolved(handle, lines(), peak()).size());
    EXPECT_EQ(FENDRA_OK, fendra_set(handle.get(), "pad", nullptr));
    EXPECT_EQ(FENDRA_OK, fendra_set(handle.get(), "pad", nullptr));
    EXPECT_EQ(convolved(handle, lines(), peak()), plain);

    ASSERT_EQ(FENDRA_OK, fendra_set(handle.get(), "max-iterations", "5"));
    ASSERT_EQ(FENDRA_OK, fendra_set(handle.get(), "max-iterations", "6"));
    ASSERT_EQ(FENDRA_OK, run(handle, Direction::deconvolve, measured(), peak()))
        << fendra_message(handle.get());
    EXPECT_NE(std::string(fendra_record(handle.get())).find("--max-iterations 6 "),
              std::string::npos);
    // Without its method it has no part in the run, which does not wait to be told so.
    ASSERT_EQ(FENDRA_OK, fendra_set(handle.get(), "method", nullptr));
    EXPECT_EQ(FENDRA_BAD_ARGUMENT, run(handle, Direction::deconvolve, measured(), peak()));
    EXPECT_EQ(0U, fendra_length(handle.get()));
    // What a run is made of only by another option is there once that is.
    ASSERT_EQ(FENDRA_OK, fendra_set(handle.get(), "circular", ""));
    EXPECT_EQ(FENDRA_BAD_ARGUMENT, run(handle, Direction::convolve, lines(), peak()));
    ASSERT_EQ(FENDRA_OK, fendra_set(handle.get(), "block", "32"));
    EXPECT_EQ(64U, convolved(handle, lines(), peak()).size());
}

TEST(LibraryHandle, HasNoResultAfterAFailure) {
    const Handle handle = openHandle();
    const double *lower = nullptr, *upper = nullptr;
    convolved(handle, lines(), peak());
    EXPECT_EQ(FENDRA_FAILED, run(handle, Direction::deconvolve, lines(), {0.0, 0.0}));
    EXPECT_STRNE("", fendra_message(handle.get()));
    EXPECT_EQ(nullptr, fendra_result(handle.get()));
    EXPECT_EQ(FENDRA_BAD_ARGUMENT, fendra_band(handle.get(), &lower, &upper));
    EXPECT_STREQ("", fendra_record(handle.get()));
    convolved(handle, lines(), peak());
    EXPECT_STREQ("", fendra_message(handle.get()));
}

namespace {

// Stops a run at a number of calls; notes what it is told.
struct Watch {
    int stopAt = std::numeric_limits<int>::max();
    int calls = 0;
    double last = 0.0;
    bool rises = true;
    std::function<void()> act = [] {};

    static int tell(void* with, double share) {
        Watch& watch = *static_cast<Watch*>(with);
        watch.rises = watch.rises && share >= watch.last && share <= 1.0;
        watch.last = share;
        watch.act();
        return ++watch.calls >= watch.stopAt ? -1 : 0;
    }
};

}  // namespace

// A deconvolution that whoever watches it may stop.
static int watched(const Handle& handle, Watch& watch) {
    fendra_observe(handle.get(), Watch::tell, &watch);
    return run(handle, Direction::deconvolve, measured(), peak());
}

TEST(LibraryObserver, StopsAnIterationAtAnyCall) {
    const Handle handle = openHandle({{"method", "van-cittert"}, {"stop-at-minimum", "off"}});
    for (const int calls : {1, 2, 40}) {
        Watch watch{calls};
        EXPECT_EQ(FENDRA_STOPPED, watched(handle, watch));
        EXPECT_EQ(watch.calls, calls);
        EXPECT_EQ(0U, fendra_length(handle.get()));
        expectSays(handle.get(), "stopped");
    }
}

TEST(LibraryObserver, SeesAllStepsAndChangesNothing) {
    const Handle handle = openHandle({{"method", "van-cittert"}, {"stop-at-minimum", "off"}});
    Watch watch;
    EXPECT_EQ(FENDRA_OK, watched(handle, watch));
    EXPECT_TRUE(watch.rises && watch.last > 0.9 && watch.calls >= 99) << watch.calls;
    const Signal result = resultOf(handle);
    const int calls = watch.calls;
    fendra_observe(handle.get(), nullptr, nullptr);
    EXPECT_EQ(FENDRA_OK, run(handle, Direction::deconvolve, measured(), peak()));
    EXPECT_EQ(watch.calls, calls);
    EXPECT_EQ(resultOf(handle), result);
}

TEST(LibraryObserver, FindsTheHandleRunningWhicheverThreadAsks) {
    const Handle handle = openHandle();
    Watch watch;
    watch.act = [&] {
        expectRefused(handle.get(), "runs");
        std::thread(expectRefused, handle.get(), "runs").join();
    };
    fendra_observe(handle.get(), Watch::tell, &watch);
    EXPECT_EQ(convolved(handle, lines(), peak()).size(), 64U);
    EXPECT_GE(watch.calls, 1);
}

// What ten handles give that are used one after the other.
static Signal resultsWith(const Options& options) {
    Signal all;
    for (int round = 0; round < 10; ++round) {
        const Handle handle = openHandle(options);
        const auto direction = round % 2 == 0 ? Direction::convolve : Direction::deconvolve;
        Watch watch;
        fendra_observe(handle.get(), Watch::tell, &watch);
        EXPECT_EQ(FENDRA_OK, run(handle, direction, measured(), peak()));
        EXPECT_STRNE("", fendra_record(handle.get()));
        const Signal values = resultOf(handle);
        all.insert(all.end(), values.begin(), values.end());
    }
    return all;
}

TEST(LibraryThreads, FourHandlesWorkAtOnce) {
    const std::array<Options, 4> options = {{{},
                                             {{"method", "van-cittert"}, {"max-iterations", "20"}},
                                             {{"method", "pseudo-inverse"}},
                                             {{"auto", ""}, {"jobs", "2"}}}};
    std::array<Signal, 4> alone, together;
    std::transform(options.begin(), options.end(), alone.begin(), resultsWith);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < 4; ++i) {
        threads.emplace_back([&, i] { together[i] = resultsWith(options[i]); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(together, alone);
}
