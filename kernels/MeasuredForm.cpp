#include "kernels/MeasuredForm.h"

#include "kernels/convolution.h"
#include "kernels/product.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <limits>

namespace kernels {

// Of a form: the shortest of its turns. The forms take turns, so that a slower spell of the machine
// meets all.
InstructionSet MeasuredForm::measure() {
    using Clock = std::chrono::steady_clock;
    constexpr int turns = 5;
    const std::vector<InstructionSet> sets = availableInstructionSets();
    std::vector<Clock::duration> shortest(sets.size(), Clock::duration::max());
    for (int turn = 0; turn < turns; ++turn) {
        for (std::size_t i = 0; i < sets.size(); ++i) {
            const Clock::time_point start = Clock::now();
            trial(sets[i]);
            shortest[i] = std::min(shortest[i], Clock::now() - start);
        }
    }
    const auto best = std::min_element(shortest.begin(), shortest.end());
    return sets[static_cast<std::size_t>(best - shortest.begin())];
}

InstructionSet MeasuredForm::setFor(double multiplyAdds) {
    constexpr double workOfTrial = 1 << 18;
    if (const auto chosen = chosenInstructionSet()) {
        return *chosen;
    }
    int set = fastest.load(std::memory_order_relaxed);
    if (set == unknown && multiplyAdds < workOfTrial) {
        return instructionSet();
    }
    if (set == unknown) {
        set = static_cast<int>(measure());
        fastest.store(set, std::memory_order_relaxed);
    }
    return static_cast<InstructionSet>(set);
}

std::vector<FormInUse> formsInUse() {
    constexpr double any = std::numeric_limits<double>::infinity();
    const InstructionSet products = productForm(any);
    return {
        {"convolution", convolutionForm(any)}, {"elimination", products}, {"product", products}};
}

}  // namespace kernels
