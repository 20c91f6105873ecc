#include "kernels/contract/trial.h"

#include <gtest/gtest.h>

using KernelContract = testing::TestWithParam<kernels::KernelCase>;

TEST_P(KernelContract, FastFormsGiveTheBitsOfThePlainLoop) {
    const kernels::KernelCase& kernel = GetParam();
    EXPECT_EQ(
        "", kernels::differenceOfForms(kernel, kernel.sizes, kernels::availableInstructionSets()));
}

INSTANTIATE_TEST_SUITE_P(All, KernelContract, testing::ValuesIn(kernels::kernelCases()),
                         [](const auto& kernel) { return kernel.param.name; });

// A kernel whose fast form loses the sign of a zero: a difference that no comparison of numbers
// finds.
static std::vector<double> losesSigns(kernels::Form form, int size, kernels::Input& input) {
    kernels::Samples samples = input.take(size);
    std::vector<double> results(samples.data(), samples.data() + size);
    for (double& result : results) {
        result += form == kernels::Form::fast ? 0.0 : -0.0;
    }
    return results;
}

TEST(KernelTrial, NamesTheFirstDifference) {
    const kernels::KernelCase kernel = {"losesSigns", {0, 13, 14, 20}, losesSigns};
    EXPECT_EQ(
        "size 14, index 13, of oddities with baseline",
        kernels::differenceOfForms(kernel, kernel.sizes, {kernels::InstructionSet::baseline}));
}
