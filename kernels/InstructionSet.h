#pragma once

#include <vector>

namespace kernels {

// The instruction sets that kernels exist for. All give the same bits; the wider ones compute more
// results side by side.
enum class InstructionSet { baseline, avx2, avx512 };

// "baseline", "avx2", "avx512"
const char* instructionSetName(InstructionSet set);

// Those available with this processor and operating system, the widest last.
std::vector<InstructionSet> availableInstructionSets();

// The widest of these.
InstructionSet widestInstructionSet();

// The one that kernels run on: the widest, unless another has been chosen.
InstructionSet instructionSet();

// Kernels run on this set from now on, in all threads and in all libraries of the process. It must
// not be wider than the widest.
void chooseInstructionSet(InstructionSet set);

}  // namespace kernels
