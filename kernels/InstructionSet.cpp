#include "kernels/InstructionSet.h"

#include <array>
#include <atomic>
#include <cstddef>

namespace kernels {

InstructionSet widestInstructionSet() {
#if defined(__x86_64__) || defined(__i386__)
    if (__builtin_cpu_supports("avx512f")) {
        return InstructionSet::avx512;
    }
    if (__builtin_cpu_supports("avx2")) {
        return InstructionSet::avx2;
    }
#endif
    return InstructionSet::baseline;
}

const char* instructionSetName(InstructionSet set) {
    constexpr std::array names = {"baseline", "avx2", "avx512"};
    return names[static_cast<std::size_t>(set)];
}

std::vector<InstructionSet> availableInstructionSets() {
    std::vector<InstructionSet> sets;
    for (int set = 0; set <= static_cast<int>(widestInstructionSet()); ++set) {
        sets.push_back(static_cast<InstructionSet>(set));
    }
    return sets;
}

static std::atomic<InstructionSet>& chosen() {
    static std::atomic<InstructionSet> set = widestInstructionSet();
    return set;
}

InstructionSet instructionSet() {
    return chosen().load(std::memory_order_relaxed);
}

void chooseInstructionSet(InstructionSet set) {
    chosen().store(set, std::memory_order_relaxed);
}

}  // namespace kernels
