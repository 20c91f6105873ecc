#include "kernels/InstructionSet.h"
#include "kernels/contract/KernelCase.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <random>
#include <string>

struct Values {
    const char* name;
    std::vector<double> values;
};

// A prime number of values: they meet each other at ever new distances.
static std::vector<double> noise(double spread) {
    std::mt19937_64 generator(7);
    std::uniform_real_distribution<double> mantissa(-1.0, 1.0), exponent(-spread, spread);
    std::vector<double> values(9973);
    for (double& value : values) {
        value = std::ldexp(mantissa(generator), static_cast<int>(exponent(generator)));
    }
    return values;
}

// Noise, every 13th value of which is one that arithmetic treats apart.
static std::vector<double> oddities() {
    using Limits = std::numeric_limits<double>;
    constexpr std::array odd = {0.0,
                                -0.0,
                                Limits::denorm_min(),
                                -3 * Limits::denorm_min(),
                                Limits::min(),
                                -Limits::max(),
                                Limits::infinity(),
                                -Limits::infinity(),
                                Limits::quiet_NaN()};
    std::vector<double> values = noise(4);
    for (std::size_t i = 0; i < values.size(); i += 13) {
        values[i] = odd[i / 13 % odd.size()];
    }
    return values;
}

class KernelContract : public testing::TestWithParam<KernelCase> {
protected:
    ~KernelContract() override { chooseInstructionSet(widestInstructionSet()); }
};

TEST_P(KernelContract, FastFormsGiveTheBitsOfThePlainLoop) {
    const KernelCase& kernel = GetParam();
    const std::array<Values, 3> inputs = {
        {{"noise", noise(0)}, {"wide noise", noise(600)}, {"oddities", oddities()}}};
    for (const auto& [name, values] : inputs) {
        for (const int size : kernel.sizes) {
            Input plainInput(values, 0);
            const std::vector<double> expected = kernel.run(Form::plain, size, plainInput);
            for (int set = 0; set <= static_cast<int>(widestInstructionSet()); ++set) {
                chooseInstructionSet(static_cast<InstructionSet>(set));
                Input input(values, size % 8);
                ASSERT_EQ(-1, firstDifference(expected, kernel.run(Form::fast, size, input)))
                    << name << ", size " << size << ", instruction set " << set;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, KernelContract, testing::ValuesIn(kernelCases()),
                         [](const auto& kernel) { return kernel.param.name; });
