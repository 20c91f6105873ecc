#include "fuzz/fuzz.h"
#include "kernels/InstructionSet.h"
#include "kernels/contract/KernelCase.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

// An input is a byte each for kernel, instruction set and alignment, two for the size, and the
// doubles that the kernel works on, over and over again.

static const std::vector<int>& sizesOf(std::size_t kernel) {
    static const auto sizes = [] {
        constexpr int largest = 1500;
        std::vector<std::vector<int>> all;
        for (const kernels::KernelCase& each : kernels::kernelCases()) {
            std::copy_if(each.sizes.begin(), each.sizes.end(),
                         std::back_inserter(all.emplace_back()),
                         [](int size) { return size <= largest; });
        }
        return all;
    }();
    return sizes[kernel];
}

static std::vector<double> doublesOf(InputReader& bytes) {
    std::vector<double> values;
    do {
        std::array<char, sizeof(double)> raw = {};
        bytes.text(raw.size()).copy(raw.data(), raw.size());
        values.push_back(std::bit_cast<double>(raw));
    } while (!bytes.isEmpty());
    return values;
}

void fuzzOne(Bytes input) {
    InputReader bytes(input);
    const std::size_t index = bytes.byte() % kernels::kernelCases().size();
    const kernels::KernelCase& kernel = kernels::kernelCases()[index];
    const std::vector<kernels::InstructionSet> sets = kernels::availableInstructionSets();
    kernels::chooseInstructionSet(sets[bytes.byte() % sets.size()]);
    const int offset = bytes.byte() % 8;
    const std::size_t high = bytes.byte(), low = bytes.byte();
    const int size = sizesOf(index)[(256 * high + low) % sizesOf(index).size()];
    const std::vector<double> values = doublesOf(bytes);

    kernels::Input plainInput(values, 0), fastInput(values, offset);
    const std::vector<double> expected = kernel.run(kernels::Form::plain, size, plainInput);
    const std::string claim = "the forms of " + kernel.name + " agree at size " +
                              std::to_string(size) + " with " +
                              kernels::instructionSetName(kernels::instructionSet());
    require(
        kernels::firstDifference(expected, kernel.run(kernels::Form::fast, size, fastInput)) == -1,
        claim.c_str());
}
