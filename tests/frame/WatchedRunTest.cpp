#include "host/TCError.h"
#include "platform/ArithmeticMode.h"
#include "tests/frame/ModuleRig.h"
#include "tests/support/HostArithmetic.h"
#include "tests/support/RunWatcher.h"
#include "tests/support/Signal.h"

#include <gtest/gtest.h>

#include <cmath>
#include <thread>
#include <utility>

static void feed(ModuleRig& rig, const Signal& first, const Signal& second) {
    rig.first.writeBlock(2, first.data(), static_cast<int>(first.size()));
    rig.second.writeBlock(2, second.data(), static_cast<int>(second.size()));
}

static Signal take(BlockStream& stream) {
    Signal samples;
    int marker = 0;
    stream.readBlock(marker, samples);
    return samples;
}

static const Settings iteration = {.direction = 1, .method = 2};

// A peak, as signal and as kernel: the error falls for as long as the iteration runs.
static Signal peak(double height) {
    Signal samples(40);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double x = (static_cast<double>(i) - 20.0) / 4.0;
        samples[i] = height * std::exp(-x * x);
    }
    return samples;
}
static const Signal kernel = peak(0.14);  // its sum is about 1

// Watches its own run in its own thread, and stops it at a loop.
static void watchAndStop(double height, std::uint32_t stopAt) {
    RunWatcher watcher;
    watcher.stopAt = stopAt;
    ModuleRig rig(iteration, 3);
    feed(rig, peak(height), kernel);
    EXPECT_EQ(rig.module.Process(), 0);
    ASSERT_EQ(watcher.steps.size(), stopAt - 1);
    const Signal numbers = {take(rig.firstNumber).at(0), take(rig.secondNumber).at(0)};
    EXPECT_EQ(numbers, (Signal{watcher.steps.back().error, static_cast<double>(stopAt)}));
    EXPECT_TRUE(take(rig.output).size() == 40 && watcher.failures.empty() &&
                watcher.steps.front().loop == 2 && watcher.steps.front().most == 100);
}

TEST(WatchedRun, IsStoppedByTheObserverOfItsThread) {
    std::thread other(watchAndStop, 1.0, 30);
    watchAndStop(0.3, 7);
    other.join();
    EXPECT_EQ(RunObserver::current(), nullptr);
}

// Long enough for questions within a step, and a kernel that takes some.
static Signal longPeak(double height) {
    Signal samples(9000);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double x = (static_cast<double>(i) - 4500.0) / 400.0;
        samples[i] = height * std::exp(-x * x);
    }
    return samples;
}

namespace {

struct Stop {
    std::uint32_t within;
    int code;
    Settings settings;
    const char* failures;
};

}  // namespace

// Runs over a long signal, and a short one that waits after it.
static void runAndStop(const Stop& stop, ModuleRig& rig, RunWatcher& watcher) {
    watcher.stopWithin = stop.within;
    feed(rig, longPeak(1.0), longPeak(1.0 / 709.0));
    feed(rig, {1.0}, {1.0});
    EXPECT_EQ(rig.module.Process(), stop.code);
    EXPECT_EQ(watcher.failures, stop.failures);
    EXPECT_TRUE(watcher.last.share > 0.0 && watcher.last.share < 1.0);
    EXPECT_EQ(watcher.last.most, stop.settings.direction == 1 ? 100U : 0U);
}

static void expectResultOrWaitingInput(ModuleRig& rig, bool result) {
    EXPECT_EQ(take(rig.output).size(), result ? 9000U : 0U);
    EXPECT_EQ(take(rig.first).size(), result ? 0U : 1U);
}

// In a step after others with the estimate of the last one; in the first one, and in a run without
// steps, with a failure that is told as a stop, and what waits on the inputs is left there.
TEST(WatchedRun, IsStoppedWithinAStep) {
    const std::vector<Stop> table = {{4, 0, iteration, ""},
                                     {1, -1, iteration, "stopped "},
                                     {0, -1, {.direction = 0, .method = 0}, "stopped "},
                                     {RunWatcher::never, 0, {.direction = 0, .method = 0}, ""}};
    for (const Stop& stop : table) {
        RunWatcher watcher;
        ModuleRig rig(stop.settings, stop.settings.direction == 1 ? 3 : 1);
        runAndStop(stop, rig, watcher);
        expectResultOrWaitingInput(rig, stop.code == 0);
        if (stop.within == 4) {
            EXPECT_EQ(take(rig.secondNumber), Signal{4.0});
            EXPECT_EQ(watcher.steps.at(3).loop, 2U);  // the first one of the other pass
        }
    }
}

// What an observer throws ends the run as a stop does, and goes no further.
TEST(WatchedRun, TakesNoHarmFromAnObserverThatThrows) {
    struct Thrower : RunWatcher {
        bool afterStep(const RunStep& step) override {
            RunWatcher::afterStep(step);
            throw 1;
        }
        void afterFailure(RunFailure why) override {
            RunWatcher::afterFailure(why);
            throw 1;
        }
    } thrower;
    ModuleRig rig(iteration, 3);
    feed(rig, peak(1.0), kernel);
    EXPECT_EQ(rig.module.Process(), 0);
    EXPECT_EQ(thrower.steps.size(), 1U);
    EXPECT_EQ(take(rig.secondNumber), Signal{2.0});
    feed(rig, noise(20, 1), noise(3, 1));
    EXPECT_EQ(rig.module.Process(), -5);
    EXPECT_EQ(thrower.failures, "refused ");
}

// A refusal is told as one, also where Process counts a result of NaN as done.
TEST(WatchedRun, SaysWhatAMethodRefuses) {
    struct Refusal {
        const char* failures;
        Signal second;
        int code;
        Settings settings;
    };
    const Refusal table[] = {{"refused ", {1}, -5, {0, 1, 2}},
                             {"refused ", {0, 0}, -1, {0, 1, 3}},
                             {"refused ", {1e-200, 0}, -1, {0, 1, 3}},  // its square is 0
                             {"refused ", {1, 0}, -1, {0, 1, 0}},
                             {"refused ", {1, 0}, 0, {0, 0, 2}},
                             {"", {0, 0}, 0, {0, 1, 1}},
                             {"", {1, 0}, 0, {0, 1, 3}}};
    for (const auto& [failures, second, code, settings] : table) {
        RunWatcher watcher;
        ModuleRig rig(settings, settings.direction == 1 && settings.method >= 2 ? 3 : 1);
        feed(rig, {3, 5}, second);
        EXPECT_EQ(rig.module.Process(), code);
        EXPECT_EQ(watcher.failures, failures) << int{settings.method};
    }
}

// Each method's result, and its numbers, on signals to which rounding and denormals matter.
static Signal resultsOfAllMethods(const Signal& first, const Signal& second) {
    Signal all;
    for (const Settings settings :
         {Settings{0, 0, 0}, {0, 0, 1}, {0, 1, 1}, {0, 1, 2}, {0, 1, 3}, {0, 1, 0}}) {
        ModuleRig rig(settings, settings.method >= 2 ? 3 : 1);
        feed(rig, first, second);
        feed(rig, {1e-160}, {1e-160});
        rig.module.Process();
        for (BlockStream* stream : {&rig.output, &rig.firstNumber, &rig.secondNumber}) {
            for (int block = 0; block < 2; ++block) {
                const Signal samples = take(*stream);
                all.insert(all.end(), samples.begin(), samples.end());
            }
        }
    }
    return all;
}

static std::pair<Rounding, bool> mode() {
    const ArithmeticMode current = ArithmeticMode::current();
    return {current.rounding, current.flushesDenormals};
}

static void throwOnReport() {
    TCError::install([](const TCError& /*error*/) { throw 1; });
    ModuleRig rig({0, 7, 2}, 3);  // has no names for its numbers, and reports that
    feed(rig, {1, 2}, {1, 0});
    EXPECT_THROW(rig.module.Process(), int);
    TCError::install({});
}

// Whatever the host computes in: the same bits, and its own mode afterwards, also where a run fails
// or the host's reporter throws.
TEST(WatchedRun, ComputesInTheStandardArithmetic) {
    const Signal first = noise(20, 1), second = noise(20, 2);
    const Signal standard = resultsOfAllMethods(first, second);
    for (const HostArithmetic::Mode& hosts : HostArithmetic::modes()) {
        const HostArithmetic host(hosts);
        const auto before = mode();
        EXPECT_EQ(bits(resultsOfAllMethods(first, second)), bits(standard));
        EXPECT_EQ(mode(), before);
        throwOnReport();
        EXPECT_EQ(mode(), before);
    }
}
