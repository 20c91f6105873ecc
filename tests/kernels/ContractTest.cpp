#include "kernels/contract/trial.h"

#include <gtest/gtest.h>

using KernelContract = testing::TestWithParam<KernelCase>;

TEST_P(KernelContract, FastFormsGiveTheBitsOfThePlainLoop) {
    const KernelCase& kernel = GetParam();
    EXPECT_EQ("", differenceOfForms(kernel, kernel.sizes, availableInstructionSets()));
}

INSTANTIATE_TEST_SUITE_P(All, KernelContract, testing::ValuesIn(kernelCases()),
                         [](const auto& kernel) { return kernel.param.name; });

// A kernel whose fast form loses the sign of a zero: a difference that no comparison of numbers
// finds.
static std::vector<double> losesSigns(Form form, int size, Input& input) {
    Samples samples = input.take(size);
    std::vector<double> results(samples.data(), samples.data() + size);
    for (double& result : results) {
        result += form == Form::fast ? 0.0 : -0.0;
    }
    return results;
}

TEST(KernelTrial, NamesTheFirstDifference) {
    const KernelCase kernel = {"losesSigns", {0, 13, 14, 20}, losesSigns};
    EXPECT_EQ("size 14, index 13, of oddities with baseline",
              differenceOfForms(kernel, kernel.sizes, {InstructionSet::baseline}));
}
