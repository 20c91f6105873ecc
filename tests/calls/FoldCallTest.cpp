#include "workbench/calls/FoldCall.h"

#include "tests/calls/samples.h"
#include "workbench/jobs/JobObserver.h"
#include "workbench/messages/Failure.h"
#include "workbench/methods/FendraSettings.h"
#include "workbench/signals/SampleDigest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <limits>
#include <thread>

static constexpr std::int32_t convolution = FendraSettings::convolution,
                              deconvolution = FendraSettings::deconvolution;

static CallResult fold(std::int32_t direction, const CallOptions& options, const CallSignal& signal,
                       const CallSignal& kernel) {
    JobObserver observer;
    return FoldCall(fendra(), direction, options).run(signal, kernel, observer);
}

// c[n] = sum_k b[k] a[n - k], in ascending k; periodic with the length of a, or of any n.
static Samples sums(const Samples& a, const Samples& b, bool periodic) {
    const auto n = std::ssize(a), m = std::ssize(b);
    Samples c(static_cast<std::size_t>(periodic ? n : n + m - 1));
    for (std::ptrdiff_t i = 0; i < std::ssize(c); ++i) {
        for (std::ptrdiff_t k = 0; k < m; ++k) {
            const std::ptrdiff_t j = periodic ? (i - k + n) % n : i - k;
            if (j >= 0 && j < n) {
                c[static_cast<std::size_t>(i)] +=
                    b[static_cast<std::size_t>(k)] * a[static_cast<std::size_t>(j)];
            }
        }
    }
    return c;
}

static double largestDifference(const Samples& left, const Samples& right) {
    EXPECT_EQ(left.size(), right.size());
    double largest = 0.0;
    for (std::size_t i = 0; i < std::min(left.size(), right.size()); ++i) {
        largest = std::max(largest, std::abs(left[i] - right[i]));
    }
    return largest;
}

TEST(FoldCall, ConvolvesByTheDefiningSums) {
    const Samples a = noise(37, 1), b = noise(9, 2);
    const CallOptions inTime = {{"domain", "time"}, {"origin", "0"}};
    EXPECT_EQ(fold(convolution, inTime, signalOf(a), signalOf(b)).value, sums(a, b, true));
    for (const char* domain : {"time", "frequency"}) {
        const CallOptions linear = {{"domain", domain}, {"origin", "0"}, {"pad", ""}};
        const CallResult result = fold(convolution, linear, signalOf(a), signalOf(b));
        EXPECT_LT(largestDifference(result.value, sums(a, b, false)), 1e-14);
        EXPECT_EQ(result.samples, 45);
        EXPECT_TRUE(result.lower.empty() && result.upper.empty() && !result.axis);
    }
}

// By what is exact where the kernel keeps enough of every frequency.
TEST(FoldCall, TakesAKernelAway) {
    Samples a(48), b(48);
    a[11] = 3.0;
    a[30] = -1.0;
    b[0] = 1.0;
    b[1] = 0.25;
    const Samples wet = sums(a, b, true);
    for (const CallOptions& options :
         {CallOptions{{"method", "spectral"}}, CallOptions{{"method", "pseudo-inverse"}},
          CallOptions{{"method", "regularized"}, {"strength", "1e-12"}, {"order", "0"}}}) {
        CallOptions given = options;
        given.push_back({"origin", "0"});
        const CallResult result = fold(deconvolution, given, signalOf(wet), signalOf(b));
        EXPECT_LT(largestDifference(result.value, a), 1e-9) << options[0].value;
    }
}

static Samples channelOf(const CallResult& result, std::size_t channel) {
    Samples samples;
    for (std::size_t i = channel; i < result.value.size(); i += 2) {
        samples.push_back(result.value[i]);
    }
    return samples;
}

static bool liesWithinItsBounds(const CallResult& result) {
    for (std::size_t i = 0; i < result.value.size(); ++i) {
        if (!(result.lower.at(i) < result.value[i] && result.value[i] < result.upper.at(i))) {
            return false;
        }
    }
    return true;
}

TEST(FoldCall, GivesChannelsBoundsAndAxisEachInItsPlace) {
    const Samples one = noise(64, 3), two = noise(64, 9), kernel = peak(64);
    Samples table;
    for (std::size_t i = 0; i < 64; ++i) {
        table.insert(table.end(), {one[i], two[i]});
    }
    CallSignal signal = signalOf(table, 2);
    signal.axis = SignalAxis{"mm", 5.0, 0.5, false, 0.5, 0.5};
    const CallOptions options = {
        {"method", "regularized"}, {"noise", "1"}, {"strength", "0.1"}, {"uncertainty", ""}};
    const CallResult both = fold(deconvolution, options, signal, signalOf(kernel));
    const CallResult alone = fold(deconvolution, options, signalOf(one), signalOf(kernel));
    const CallResult other = fold(deconvolution, options, signalOf(two), signalOf(kernel));
    ASSERT_EQ(both.channels, 2);
    ASSERT_EQ(both.value.size(), 128U);
    EXPECT_TRUE(both.axis && both.axis->start == 5.0 && both.axis->step == 0.5);
    EXPECT_EQ(channelOf(both, 0), alone.value);
    EXPECT_EQ(channelOf(both, 1), other.value);
    EXPECT_TRUE(liesWithinItsBounds(both));
}

static std::string digestOf(const CallResult& result) {
    SampleDigest digest;
    for (std::size_t i = 0; i < result.value.size(); ++i) {
        digest.add(&result.value[i], 1);
        if (!result.lower.empty()) {
            digest.add(&result.lower[i], 1);
            digest.add(&result.upper[i], 1);
        }
    }
    return digest.hex();
}

// Asked for after the caller's arrays are gone, the record still tells of the result that there
// was.
TEST(FoldCall, RecordsWhatWasDoneWhenItIsAskedFor) {
    for (const std::size_t samples : {64U, 70000U}) {
        CallResult result;
        {
            Samples signal = noise(samples, 4), kernel = peak(33);
            result = fold(convolution, {{"pad", ""}, {"gain", "-6.5"}},
                          signalOf(signal, 1, "a file.wav"), signalOf(kernel, 1, "kernel"));
            std::fill(signal.begin(), signal.end(), 0.0);
            std::fill(kernel.begin(), kernel.end(), 0.0);
        }
        const std::string record = result.record();
        EXPECT_NE(record.find(digestOf(result)), std::string::npos) << record;
        EXPECT_NE(
            record.find("\"fendra convolve 'a file.wav' kernel --domain frequency --per block "
                        "--pad --gain -6.5\""),
            std::string::npos)
            << record;
        EXPECT_EQ(result.record(), record);
    }
    const Samples lines = noise(64, 5), kernel = peak(64);
    const CallResult banded =
        fold(deconvolution, {{"method", "regularized"}, {"strength", "1"}, {"uncertainty", ""}},
             signalOf(lines), signalOf(kernel));
    EXPECT_NE(banded.record().find(digestOf(banded)), std::string::npos);
}

TEST(FoldCall, ServesSeveralThreadsAtOnce) {
    const FoldCall call(fendra(), convolution, {{"pad", ""}});
    std::vector<Samples> alone(4), together(4);
    const auto work = [&](std::vector<Samples>& results, std::size_t i) {
        const Samples signal = noise(500 + 100 * i, 6);
        const Samples kernel = peak(17);
        JobObserver observer;
        const CallResult result = call.run(signalOf(signal), signalOf(kernel), observer);
        EXPECT_NE(result.record().find(digestOf(result)), std::string::npos);
        results[i] = result.value;
    };
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < 4; ++i) {
        work(alone, i);
        threads.emplace_back([&, i] { work(together, i); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(together, alone);
}

// What a convolution of the signal with itself is refused with.
static std::string refusal(const CallSignal& signal, const CallOptions& options = {}) {
    try {
        fold(convolution, options, signal, signal);
    } catch (const Failure& failure) {
        return failure.what();
    }
    return "none";
}

TEST(FoldCall, RefusesSignalsThatAreNone) {
    const Samples good = noise(16, 7);
    Samples odd = good;
    odd[5] = std::numeric_limits<double>::quiet_NaN();
    const std::string empty = "x has no samples; give an array of one or more";
    EXPECT_EQ(refusal(signalOf({}, 1, "x")), empty);
    EXPECT_EQ(refusal({"x", nullptr, 5, 1}), empty);
    EXPECT_EQ(refusal({"x", good.data(), 16, 0}), empty);
    EXPECT_EQ(refusal({"x", good.data(), 8, 2}), "none");
    EXPECT_TRUE(refusal(signalOf(odd, 1, "x")).starts_with("x: sample 6 is nan"));
    EXPECT_TRUE(refusal(signalOf(odd, 2, "x")).starts_with("x: sample 3 is nan"));
    EXPECT_EQ(refusal(signalOf(odd), {{"allow-nonfinite", ""}}), "none");
    EXPECT_NE(refusal(signalOf(good), {{"graph", "/no/such.graph"}}).find("/no/such.graph"),
              std::string::npos);
}

namespace {

class StopsAfter final : public JobObserver {
public:
    explicit StopsAfter(int calls) : left(calls) {}
    bool advances(const JobProgress& /*progress*/) override { return --left > 0; }

private:
    std::atomic<int> left;
};

}  // namespace

TEST(FoldCall, StopsWhenTheObserverSaysSo) {
    const Samples signal = noise(4096, 8), kernel = peak(4096);
    const FoldCall call(fendra(), deconvolution,
                        {{"method", "van-cittert"},
                         {"max-iterations", "1000000000"},
                         {"stop-at-minimum", "off"},
                         {"jobs", "2"}});
    StopsAfter atOnce(1);
    EXPECT_THROW(static_cast<void>(call.run(signalOf(signal), signalOf(kernel), atOnce)), Stopped);
}
