#include "tests/frame/ModuleRig.h"
#include "tests/support/FailingAllocator.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <vector>

// Blocks are written as marker, colon and samples: "1:0.5,2 2:nan,nan".
static void feed(BlockStream& stream, const char* text) {
    std::istringstream blocks(text);
    for (std::string block; blocks >> block;) {
        std::istringstream numbers(block);
        int marker = 0;
        numbers >> marker;
        std::vector<double> samples;
        for (double sample = 0.0; numbers.ignore() && numbers >> sample;) {
            samples.push_back(sample);
        }
        stream.writeBlock(marker, samples.data(), static_cast<int>(samples.size()));
    }
}

// Samples are rounded to six digits, their transforms being short.
static std::vector<std::string> drain(BlockStream& stream) {
    std::vector<std::string> blocks;
    std::vector<double> samples;
    for (int marker = 0; stream.readBlock(marker, samples);) {
        std::ostringstream block;
        block << marker << ':';
        for (std::size_t i = 0; i < samples.size(); ++i) {
            block << (i > 0 ? "," : "") << std::round(samples[i] * 1e6) / 1e6 + 0.0;
        }
        blocks.push_back(block.str());
    }
    return blocks;
}

struct Step {
    Settings settings;
    int code;
    const char *first, *second;
    std::vector<std::string> output;
    std::array<int, 2> waiting;  // blocks left on the inputs
};

// In the time domain the kernel 1 delays by one sample, with wrap-around.
static const Step steps[] = {
    // no pair, no pass: nothing read, not even the method looked at
    {{0, 0, 0}, 0, "", "2:1 2:2 2:3 2:4", {}, {0, 4}},
    {{0, 1, 0}, 0, "1:1", "", {}, {1, 0}},
    // surplus blocks wait; of the blocks written only the last is marked as such
    {{0, 0, 0}, 0, "2:1,2 0:3,4 0:5,6 0:7 2:8", "7:1 7:1 7:1", {"1:2,1", "1:4,3", "2:6,5"}, {2, 0}},
    {{0, 0, 0}, 0, "5:1 2:2", "2:1 2:1", {"5:1", "5:2"}, {0, 0}},
    // each pass has the length of its own blocks
    {{0, 0, 0},
     0,
     "1:1,2,3,4,5 1:2 1:",
     "1:1,1 1:1,2,3 1:",
     {"1:9,6,3,5,7", "1:6,2,4", "1:"},
     {0, 0}},
    {{0, 0, 1}, 0, "2:1,2,3,4,5", "2:1", {"2:1,2,3,4,5"}, {0, 0}},
    // packets: each port has its own count, and one pass runs on nothing too
    {{1, 0, 0}, 0, "2:1,2 1: 1:3,4,5", "1:1 1:1", {"2:9,6,3,5,7"}, {0, 0}},
    {{1, 0, 0}, 0, "", "", {"0:"}, {0, 0}},
    // the second signal is the kernel, and any direction but 0 is deconvolution
    {{0, 1, 1}, 0, "2:0,1,2,3,4,5,6,7", "2:0,1,0", {"2:1,2,3,4,5,6,7,0"}, {0, 0}},
    {{1, 2, 1}, 0, "1:2,0", "1:4,0", {"1:0.5,0"}, {0, 0}},
    // no such method: what was read is gone
    {{0, 1, 0}, -1, "1:1 1:2", "1:1 1:2", {}, {1, 1}},
    {{1, 1, 4}, -1, "1:1 1:2", "1:1", {}, {0, 0}},
    // what no run writes is no number; a mode that nobody knows reads nothing
    {{0, 0, 2}, 0, "2:1,2", "2:1", {"2:nan,nan"}, {0, 0}},
    {{3, 0, 0}, 0, "2:1 2:2", "2:1 2:1", {"1:", "2:"}, {2, 2}},
};

TEST(Process, PairsRunsAndMarks) {
    for (const Step& step : steps) {
        SCOPED_TRACE(&step - steps);
        ModuleRig rig(step.settings);
        feed(rig.first, step.first);
        feed(rig.second, step.second);
        feed(rig.output, "1:4711");  // of an earlier step, nobody has read it
        EXPECT_EQ(rig.module->Process(), step.code);
        const std::array waiting{rig.first.waitingBlocks(), rig.second.waitingBlocks()};
        EXPECT_EQ(waiting, step.waiting);
        EXPECT_EQ(drain(rig.output), step.output);
    }
}

// Blocks that are not what they are with all memory: they must be NaN.
static int blocksLost(const std::vector<std::string>& output,
                      const std::vector<std::string>& complete) {
    int lost = 0;
    for (std::size_t i = 0; i < output.size(); ++i) {
        if (output[i] != complete[i]) {
            EXPECT_EQ(output[i].find_first_of("0123456789", 2), std::string::npos);
            ++lost;
        }
    }
    return lost;
}

// Memory that runs out in a run, whose result does not count, costs the numbers of one block.
// Elsewhere Process gives -1, and what earlier passes wrote stays.
class ProcessMemory : public testing::TestWithParam<Settings> {};
TEST_P(ProcessMemory, ExhaustionLeaksNothingAndForgesNothing) {
    std::vector<std::string> complete;
    int lost = 0;
    sweepAllocations([&](const FailingAllocator& memory) {
        ModuleRig rig(GetParam());
        feed(rig.first, "2:1,2,3,4,5 2:1,2,3");
        feed(rig.second, "2:1 2:1,0");
        memory.arm();
        const int code = rig.module->Process();
        const bool failed = FailingAllocator::disarm();
        const std::vector<std::string> output = drain(rig.output);
        complete = complete.empty() ? output : complete;

        EXPECT_EQ(code, output.size() == complete.size() ? 0 : -1);
        EXPECT_EQ(blocksLost(output, complete), failed && code == 0 ? 1 : 0);
        EXPECT_TRUE(failed || code == 0);
        lost += blocksLost(output, complete);
    });
    EXPECT_GT(lost, 0);
}
INSTANTIATE_TEST_SUITE_P(Modes, ProcessMemory,
                         testing::Values(Settings{0, 0, 0}, Settings{0, 0, 1}, Settings{0, 1, 1},
                                         Settings{1, 0, 0}, Settings{1, 1, 1}));
