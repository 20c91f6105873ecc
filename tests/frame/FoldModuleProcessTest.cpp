#include "tests/frame/ModuleRig.h"
#include "tests/support/FailingAllocator.h"
#include "tests/support/RunWatcher.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <thread>
#include <utility>
#include <vector>

// Blocks are written as marker, colon and samples: "1:0.5,2 2:nan,nan ".
static void feed(BlockStream& stream, const std::string& text) {
    std::istringstream blocks(text);
    for (int marker = 0; blocks >> marker;) {
        std::vector<double> samples;
        while (blocks.peek() == ':' || blocks.peek() == ',') {
            blocks.ignore();
            blocks >> samples.emplace_back();
        }
        stream.writeBlock(marker, samples.data(), static_cast<int>(samples.size()));
    }
}

// Samples are rounded to six digits, their transforms being short.
static std::string drain(BlockStream& stream) {
    std::ostringstream blocks;
    std::vector<double> samples;
    for (int marker = 0; stream.readBlock(marker, samples);) {
        blocks << marker;
        for (std::size_t i = 0; i < samples.size(); ++i) {
            blocks << (i > 0 ? ',' : ':') << std::round(samples[i] * 1e6) / 1e6 + 0.0;
        }
        blocks << ' ';
    }
    return blocks.str();
}

namespace {

struct Step {
    Settings settings;
    const char *first, *second;
    std::string outcome;  // result, blocks left on the inputs, output
};

}  // namespace

// In the time domain the kernel 1 delays by one sample, with wrap-around.
static const Step steps[] = {
    // no pair, no pass: nothing read, not even the method looked at
    Step{{0, 0, 0}, "", "2:1 2:2 2:3 2:4", "0 0 4 "},
    Step{{0, 1, 0}, "1:1", "", "0 1 0 "},
    // surplus blocks wait; of the blocks written only the last is marked as such
    Step{{0, 0, 0}, "2:1,2 0:3,4 0:5,6 0:7 2:8", "7:1 7:1 7:1", "0 2 0 1:2,1 1:4,3 2:6,5 "},
    Step{{0, 0, 0}, "5:1 2:2", "2:1 2:1", "0 0 0 5:1 5:2 "},
    // each pass has the length of its own blocks
    Step{{0, 0, 0}, "1:1,2,3,4,5 1:2 1", "1:1,1 1:1,2,3 1", "0 0 0 1:9,6,3,5,7 1:6,2,4 1 "},
    Step{{0, 0, 1}, "2:1,2,3,4,5", "2:1", "0 0 0 2:1,2,3,4,5 "},
    // packets: each port has its own count, and one pass runs on nothing too
    Step{{1, 0, 0}, "2:1,2 1 1:3,4,5", "1:1 1:1", "0 0 0 2:9,6,3,5,7 "},
    Step{{1, 0, 0}, "", "", "0 0 0 0 "},
    // the second signal is the kernel, and any direction but 0 is deconvolution
    Step{{0, 1, 1}, "2:0,1,2,3,4,5,6,7", "2:0,1,0", "0 0 0 2:1,2,3,4,5,6,7,0 "},
    Step{{1, 2, 1}, "1:2,0", "1:4,0", "0 0 0 1:0.5,0 "},
    // no such method: what was read is gone
    Step{{0, 1, 0}, "1:1 1:2", "1:1 1:2", "-1 1 1 "},
    Step{{1, 1, 4}, "1:1 1:2", "1:1", "-1 0 0 "},
    // what no run writes is no number; a mode that nobody knows reads nothing
    Step{{0, 0, 2}, "2:1,2", "2:1", "0 0 0 2:nan,nan "},
    Step{{3, 0, 0}, "2:1 2:2", "2:1 2:1", "0 2 2 1 2 "},
};

TEST(Process, PairsRunsAndMarks) {
    for (const Step& step : steps) {
        ModuleRig rig(step.settings);
        feed(rig.first, step.first);
        feed(rig.second, step.second);
        feed(rig.output, "1:4711");  // of an earlier step, nobody has read it
        std::ostringstream outcome;
        outcome << rig.module.Process() << ' ' << rig.first.waitingBlocks() << ' '
                << rig.second.waitingBlocks() << ' ' << drain(rig.output);
        EXPECT_EQ(outcome.str(), step.outcome) << step.first << "| " << step.second;
    }
}

// Result, signal and the two numbers of the iteration and of the filter.
TEST(Process, ReportsTwoNumbersBesideTheSignal) {
    const Step table[] = {
        {{0, 1, 2}, "2:1,0,0,0", "2:1,0,0,0", "0 2:0,0,0,0 2:1 2:1 "},
        {{1, 1, 2}, "1:1,0 2:0,0", "1:1,0,0,0", "0 1:0,0,0,0 1:1 1:1 "},
        {{0, 1, 3},
         "2:3,5 2:3,5",
         "2:1,0 2:1,1",
         "0 1:3,5 2:2.66667,2.66667 1:0 2:0.333333 1:0 2:0.333333 "},
        {{1, 1, 3}, "2:3 2:5", "1:1 1:1", "0 2:2.66667,2.66667 2:0.333333 2:0.333333 "},
        {{0, 1, 2}, "2:1,2,3,4,5,6,7,8", "2:1,2,3", "-5 "},
        {{0, 1, 3}, "2:1,2 2:1,2", "2:1,0 2:0,0", "-1 1:1,2 1:0 1:0 "},  // a kernel of zeros
    };
    for (const Step& step : table) {
        ModuleRig rig(step.settings, 3);
        feed(rig.first, step.first);
        feed(rig.second, step.second);
        const std::string code = std::to_string(rig.module.Process()) + " ";
        const std::string outcome =
            code + drain(rig.output) + drain(rig.firstNumber) + drain(rig.secondNumber);
        EXPECT_EQ(outcome, step.outcome) << step.first << "| " << step.second;
    }
}

static std::string drainAll(ModuleRig& rig) {
    return drain(rig.output) + "| " + drain(rig.firstNumber) + "| " + drain(rig.secondNumber);
}

// Blocks of which each pair has its own result.
static const char* const firsts[] = {"1:1,0 ", "1:3,1 ", "1:2,5 "};
static const char* const seconds[] = {"1:1,0.5 ", "1:1,0 ", "1:2,1 "};

// What two calls of Process write of the three pairs, memory running out in the first or not.
static std::string runTwice(const Settings& settings, const FailingAllocator& memory) {
    ModuleRig rig(settings, 3);
    const RunWatcher watcher;
    for (int pair = 0; pair < 3; ++pair) {
        feed(rig.first, firsts[pair]);
        feed(rig.second, seconds[pair]);
    }
    memory.arm();
    const int code = rig.module.Process();
    const bool failed = FailingAllocator::disarm();
    EXPECT_EQ(watcher.failures, failed ? "memory " : "");
    EXPECT_TRUE(code == 0 || (failed && code == -1)) << code;
    std::string written = drainAll(rig);
    if (code == -1) {
        EXPECT_EQ(rig.first.waitingBlocks(), rig.second.waitingBlocks());
        feed(rig.first, firsts[0]);  // another pair, which the next call finds in step
        feed(rig.second, seconds[0]);
        EXPECT_EQ(rig.module.Process(), 0);
        written += "& " + drainAll(rig);
    }
    return written;
}

// The same by the passes that are left, each as Process gives it with all memory.
static std::string passes(const Settings& settings, const std::vector<int>& pairs) {
    ModuleRig rig(settings, 3);
    for (const int pair : pairs) {
        feed(rig.first, firsts[pair]);
        feed(rig.second, seconds[pair]);
    }
    EXPECT_TRUE(pairs.empty() || rig.module.Process() == 0);
    return drainAll(rig);
}

// The text with the block of that index, counted from 0, being NaN.
static std::string withNaN(std::string text, int block) {
    std::size_t start = 0;
    for (; block > 0; --block) {
        start = text.find(' ', start) + 1;
    }
    const std::size_t end = text.find(' ', start);
    std::string samples = "1:nan";
    for (auto commas = std::count(&text[start], &text[end], ','); commas > 0; --commas) {
        samples += ",nan";
    }
    return text.replace(start, end - start, samples);
}

static std::vector<std::string> outcomesOf(const Settings& settings) {
    const std::string all = passes(settings, {0, 1, 2});
    std::vector<std::string> outcomes = {all};
    const bool packet = settings.executionMode == 1;
    const int passCount = packet ? 1 : 3;
    const std::vector<int> before[] = {{}, {0}, {0, 1}};
    const std::vector<int> after[] = {{1, 2, 0}, {2, 0}, {0}};
    for (int lost = 0; lost < passCount; ++lost) {
        outcomes.push_back(passes(settings, before[lost]) + "& " +
                           passes(settings, after[packet ? 2 : lost]));
        if (settings.direction == 0 || settings.method == 1) {
            outcomes.push_back(withNaN(all, lost));
        }
    }
    return outcomes;
}

// Whichever allocation fails: the pass that it falls into is gone from both inputs and on no
// output, or, where results do not count, its result is NaN. Each of these occurs, and nothing
// else.
TEST(Process, KeepsInputsInStepAndOutputsWholeWhereMemoryRunsOut) {
    for (const char executionMode : {'\0', '\1'}) {
        for (const auto& [direction, method] :
             {std::pair{'\0', '\0'}, {'\0', '\1'}, {'\1', '\1'}, {'\1', '\2'}, {'\1', '\3'}}) {
            const Settings settings{executionMode, direction, method};
            const std::vector<std::string> outcomes = outcomesOf(settings);
            std::vector<bool> seen(outcomes.size());
            sweepAllocations([&](const FailingAllocator& memory) {
                const std::string outcome = runTwice(settings, memory);
                const auto found = std::find(outcomes.begin(), outcomes.end(), outcome);
                ASSERT_NE(found, outcomes.end()) << outcome;
                seen[static_cast<std::size_t>(found - outcomes.begin())] = true;
            });
            EXPECT_EQ(std::count(seen.begin(), seen.end(), false), 0) << int{method};
        }
    }
}

// A convolution of 1000 samples.
static void runOften(double start, std::vector<double>& result) {
    std::vector<double> signal(1000, start);
    signal[1] = -start;
    for (int round = 0, marker = 0; round < 30; ++round) {
        ModuleRig rig(Settings{});
        rig.first.writeBlock(2, signal.data(), 1000);
        rig.second.writeBlock(2, signal.data(), 777);
        rig.module.Process();
        rig.output.readBlock(marker, result);
    }
}

// Two objects, each in a thread of its own, give the same bits as alone.
TEST(Process, RunsInTwoThreads) {
    std::vector<double> alone[2], together[2];
    runOften(1.5, alone[0]);
    runOften(0.1, alone[1]);
    std::thread other(runOften, 0.1, std::ref(together[1]));
    runOften(1.5, together[0]);
    other.join();
    EXPECT_TRUE(together[0] == alone[0] && together[1] == alone[1] && alone[0].size() == 1000);
}
