#include "workbench/module/ModuleRun.h"

#include "workbench/module/ModuleDriver.h"
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
    ModuleRun run(*first, *second, plan);
    ModuleDriver driver(*adder);
    for (const std::vector<double>& sums : {std::vector<double>{2, 4}, {8}}) {
        ModuleRun::Round round = run.next();
        round.answers[0] = run.answer(driver, round, 0);
        EXPECT_EQ(run.delivered(round), sums);
        EXPECT_TRUE(round.answers[0].numbers.empty());
    }
}
