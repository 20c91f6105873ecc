#pragma once

#include <vector>

namespace kernels {

// The instruction sets that kernels exist for. All give the same bits; the wider ones compute more
// results side by side.
enum class InstructionSet { baseline, avx2, avx512 };

// "baseline", "avx2", "avx512"
const char* instructionSetName(InstructionSet set);

// Those that this processor and its system have, the widest last.
std::vector<InstructionSet> availableInstructionSets();

// The widest one that this processor and its system have.
InstructionSet widestInstructionSet();

// The one that kernels run on: the widest, until another is chosen.
InstructionSet instructionSet();

// From now on kernels run on this one, in all threads. It must not be wider than the widest.
void chooseInstructionSet(InstructionSet set);

}  // namespace kernels
