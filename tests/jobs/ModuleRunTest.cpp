#include "workbench/module/ModuleRun.h"

#include "workbench/module/ModuleLibrary.h"
#include "workbench/signals/Signal.h"

#include <gtest/gtest.h>

// A module of another maker is asked for its ports, and run without being set up: that would end
// the process.
TEST(ModuleRun, DrivesAModuleThatIsNotFendra) {
    const ModuleLibrary library(ModuleLibrary::standardFile().replace_filename("adder.so"));
    const ModuleObject adder = library.makeModule();
    Signal signal;
    signal.info.channels = 1;
    signal.info.samples = 3;
    signal.interleaved = {1, 2, 4};
    const SignalSource source = sourceOf(std::make_shared<const Signal>(signal));
    const auto first = source.open(), second = source.open();
    RunPlan plan;
    plan.blockLength = 2;
    ModuleRun run(*adder, *first, *second, plan);
    std::vector<double> sums;
    run.drive({[](std::int64_t, int) { return true; }, [](const ModuleRun::Channel&) {},
               [&](const double* samples, std::int64_t count) {
                   sums.insert(sums.end(), samples, samples + count);
               }});
    EXPECT_EQ(sums, (std::vector<double>{2, 4, 8}));
    EXPECT_TRUE(run.numbers().empty());
}
