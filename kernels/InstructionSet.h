#pragma once

#include <optional>
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

// The one that all kernels run on, if one has been chosen.
std::optional<InstructionSet> chosenInstructionSet();

// Kernels run on this set from now on, in all threads and in all libraries of the process; it must
// not be wider than the widest. None: each on the one that suits it, as from the start.
void chooseInstructionSet(std::optional<InstructionSet> set);

// The one that is chosen, or else the widest: for kernels that gain from every lane.
InstructionSet instructionSet();

}  // namespace kernels
