#include "workbench/treatment/Preparation.h"

#include "tests/support/Signal.h"
#include "workbench/analysis/PowerScale.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

struct Case {
    PreparationPlan plan;
    int signalPower, kernelPower;
};

}  // namespace

// A kernel of one line at its zero.
static Signal lineAt(std::size_t place, std::size_t length, double height) {
    Signal kernel(length);
    kernel[place] = height;
    return kernel;
}

// What a method makes of a kernel that is a line: the signal, early by the line's place, which the
// prepared kernel tells, and by the lag.
static Signal deconvolved(const Operands& operands, int lag) {
    const Signal& kernel = operands.kernel;
    const auto place = std::max_element(kernel.begin(), kernel.end()) - kernel.begin();
    Signal result = operands.signal;
    std::rotate(result.begin(), result.begin() + place + lag, result.end());
    return result;
}

static void expectUndone(const Case& entry) {
    const auto& [plan, signalPower, kernelPower] = entry;
    const Signal plain = noise(40, 7);
    const Signal kernel = lineAt(3, 9, std::ldexp(1.0, kernelPower));
    const Preparation preparation(kernel, plain.size(), signalPower, plan);
    const Operands operands = preparation.operands(scaled(plain, signalPower));
    EXPECT_EQ(operands.signal.size(), operands.kernel.size());
    EXPECT_EQ(operands.signal.size(),
              preparation.preparedLength() * static_cast<std::size_t>(plan.oversampling));
    const Signal back =
        scaled(preparation.restored(deconvolved(operands, plan.lag)), kernelPower - signalPower);
    ASSERT_EQ(back.size(), plain.size());
    for (std::size_t i = 0; i < plain.size(); ++i) {
        EXPECT_NEAR(back[i], plain[i], plan.oversampling == 1 ? 0.0 : 1e-13);
    }
}

// Signals and kernels of any power of two, and all that is done to them.
TEST(Preparation, IsUndoneOnTheWayBack) {
    for (const Ends ends : {Ends::periodic, Ends::zero, Ends::odd, Ends::bridge}) {
        SCOPED_TRACE(static_cast<int>(ends));
        expectUndone({{.ends = ends, .kernelZero = 3}, 0, 0});
        expectUndone({{.ends = ends, .kernelZero = 3, .centred = true}, 0, 0});
        expectUndone({{.ends = ends, .oversampling = 4, .kernelZero = 3, .lag = 1}, 0, 0});
        expectUndone({{.ends = ends, .kernelZero = 3, .lag = 1}, -600, -500});
    }
}

// Without moving, a plan that adds nothing gives the samples of the module, to the last bit.
TEST(Preparation, LeavesSamplesOfTheModuleWhereNothingIsMoved) {
    const Signal signal = noise(12, 3), kernel = noise(5, 4);
    const Preparation preparation(kernel, 12, 0, {.kernelZero = 2, .lag = 1, .moves = false});
    const Operands operands = preparation.operands(signal);
    EXPECT_EQ(bits(operands.signal), bits(signal));
    EXPECT_EQ(bits(preparation.restored(signal)), bits(signal));
    EXPECT_TRUE(std::equal(kernel.begin(), kernel.end(), operands.kernel.begin()));
}
