#include "tests/library/Handle.h"

#include "tests/support/FailingAllocator.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <thread>

TEST(LibraryHandle, RefusesArgumentsThatCannotBeUsed) {
    static constexpr std::size_t most = std::numeric_limits<std::size_t>::max();
    static const double x[] = {1.0, 2.0, 3.0}, odd[] = {1.0, std::nan(""), -HUGE_VAL};
    const struct {
        std::function<int(fendra*)> call;
        int code;
        const char* reason;
    } table[] = {
        {[](fendra* h) { return fendra_convolve(h, nullptr, 3, x, 3); }, 1,
         "signal has no samples"},
        {[](fendra* h) { return fendra_convolve(h, x, 3, nullptr, 3); }, 1,
         "kernel has no samples"},
        {[](fendra* h) { return fendra_convolve(h, x, 0, x, 3); }, 1, "signal has no samples"},
        {[](fendra* h) { return fendra_deconvolve(h, x, 3, x, 0); }, 1, "kernel has no samples"},
        {[](fendra* h) { return fendra_convolve(h, x, most, x, 3); }, 1, "than memory can hold"},
        {[](fendra* h) { return fendra_convolve(h, x, most / 8, x, 3); }, 1, "signal: "},
        {[](fendra* h) { return fendra_deconvolve(h, x, 3, x, most / 2 + 4); }, 1, "kernel: "},
        {[](fendra* h) { return fendra_convolve_channels(h, x, 3, 0, x, 3, 1); }, 1, "no samples"},
        {[](fendra* h) { return fendra_convolve_channels(h, x, 1, most, x, 3, 1); }, 1, "channels"},
        {[](fendra* h) { return fendra_convolve_channels(h, x, 8, most / 4, x, 3, 1); }, 1,
         "signal"},
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
    const Handle handle = openHandle();
    const std::string name(100000, 'x');
    for (const auto& row : table) {
        EXPECT_EQ(row.code, row.call(handle.get())) << row.reason;
        const std::string message = fendra_message(handle.get());
        EXPECT_NE(message.find(row.reason), std::string::npos) << row.reason << ": " << message;
        EXPECT_EQ(message.find('\n'), std::string::npos) << message;
        EXPECT_EQ(0U, fendra_length(handle.get()));
    }
    EXPECT_EQ(FENDRA_BAD_ARGUMENT, fendra_set(handle.get(), name.c_str(), name.c_str()));
    EXPECT_LT(std::string(fendra_message(handle.get())).size(), 500U);
    EXPECT_EQ(convolved(handle, lines(), peak()), convolved(openHandle(), lines(), peak()));
}

// Every call, on a handle that is not one.
static void expectRefused(fendra* handle, const std::string& reason) {
    const Signal x = lines();
    const double* bound = x.data();
    EXPECT_EQ(FENDRA_BAD_ARGUMENT, fendra_set(handle, "pad", ""));
    EXPECT_EQ(FENDRA_BAD_ARGUMENT, fendra_convolve(handle, x.data(), 64, x.data(), 64));
    EXPECT_EQ(FENDRA_BAD_ARGUMENT, fendra_deconvolve(handle, x.data(), 64, x.data(), 64));
    EXPECT_EQ(FENDRA_BAD_ARGUMENT,
              fendra_convolve_channels(handle, x.data(), 32, 2, x.data(), 64, 1));
    EXPECT_EQ(FENDRA_BAD_ARGUMENT,
              fendra_deconvolve_channels(handle, x.data(), 32, 2, x.data(), 64, 1));
    EXPECT_EQ(FENDRA_BAD_ARGUMENT, fendra_band(handle, &bound, &bound));
    EXPECT_EQ(x.data(), bound);
    EXPECT_EQ(0U, fendra_length(handle));
    EXPECT_EQ(0U, fendra_channels(handle));
    EXPECT_EQ(nullptr, fendra_result(handle));
    EXPECT_STREQ("", fendra_record(handle));
    EXPECT_NE(std::string(fendra_message(handle)).find(reason), std::string::npos)
        << fendra_message(handle);
    fendra_observe(handle, nullptr, nullptr);
    fendra_close(handle);
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

TEST(LibraryObserver, StopsAnIterationAndSeesWholeRuns) {
    const Handle handle = openHandle({{"method", "van-cittert"}, {"stop-at-minimum", "off"}});
    ASSERT_EQ(FENDRA_OK, run(handle, Direction::deconvolve, measured(), peak()))
        << fendra_message(handle.get());
    const Signal whole = resultOf(handle);
    for (const int calls : {1, 2, 40}) {
        Watch watch{calls};
        fendra_observe(handle.get(), Watch::tell, &watch);
        EXPECT_EQ(FENDRA_STOPPED, run(handle, Direction::deconvolve, measured(), peak()));
        EXPECT_EQ(watch.calls, calls);
        EXPECT_EQ(0U, fendra_length(handle.get()));
        EXPECT_STRNE("", fendra_message(handle.get()));
    }
    Watch watch;
    fendra_observe(handle.get(), Watch::tell, &watch);
    ASSERT_EQ(FENDRA_OK, run(handle, Direction::deconvolve, measured(), peak()))
        << fendra_message(handle.get());
    EXPECT_EQ(resultOf(handle), whole);
    EXPECT_TRUE(watch.rises && watch.calls >= 99) << watch.calls;
    EXPECT_GT(watch.last, 0.9);
    fendra_observe(handle.get(), nullptr, nullptr);
    const int calls = watch.calls;
    ASSERT_EQ(FENDRA_OK, run(handle, Direction::deconvolve, measured(), peak()))
        << fendra_message(handle.get());
    EXPECT_EQ(watch.calls, calls);
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

TEST(LibraryThreads, FourHandlesWorkAtOnce) {
    const std::array<Options, 4> options = {{{},
                                             {{"method", "van-cittert"}, {"max-iterations", "20"}},
                                             {{"method", "pseudo-inverse"}},
                                             {{"auto", ""}, {"jobs", "2"}}}};
    const auto work = [](const Options& some) {
        Signal all;
        for (int round = 0; round < 5; ++round) {
            const Handle handle = openHandle(some);
            Watch watch;
            fendra_observe(handle.get(), Watch::tell, &watch);
            for (const Direction direction : {Direction::convolve, Direction::deconvolve}) {
                EXPECT_EQ(FENDRA_OK, run(handle, direction, measured(), peak()))
                    << fendra_message(handle.get());
                const Signal values = resultOf(handle);
                all.insert(all.end(), values.begin(), values.end());
                EXPECT_STRNE("", fendra_record(handle.get()));
            }
        }
        return all;
    };
    std::array<Signal, 4> alone, together;
    std::transform(options.begin(), options.end(), alone.begin(), work);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < 4; ++i) {
        threads.emplace_back([&, i] { together[i] = work(options[i]); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(together, alone);
}
