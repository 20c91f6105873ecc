#include "kernels/contract/trial.h"

#include "kernels/contract/inputs.h"

#include <cstddef>

namespace kernels {

// The fast form on one of the sets; afterwards kernels run on the set that they ran on before.
static std::vector<double> runFast(const KernelCase& kernel, int size, Input input,
                                   InstructionSet set) {
    const std::optional<InstructionSet> before = chosenInstructionSet();
    chooseInstructionSet(set);
    std::vector<double> results = kernel.run(Form::fast, size, input);
    chooseInstructionSet(before);
    return results;
}

std::string differenceOfForms(const KernelCase& kernel, const std::vector<int>& sizes,
                              const std::vector<InstructionSet>& sets,
                              const std::function<void(std::span<const double>)>& take) {
    std::string first;
    for (const auto& [name, values] : kernelInputs()) {
        for (const int size : sizes) {
            Input input(values, 0);
            const std::vector<double> expected = kernel.run(Form::plain, size, input);
            for (const InstructionSet set : sets) {
                const std::vector<double> results =
                    runFast(kernel, size, Input(values, size % 8), set);
                const std::ptrdiff_t index = firstDifference(expected, results);
                if (index >= 0 && first.empty()) {
                    first = "size " + std::to_string(size) + ", index " + std::to_string(index) +
                            ", of " + name + " with " + instructionSetName(set);
                }
                if (take) {
                    take(results);
                }
            }
        }
    }
    return first;
}

}  // namespace kernels
