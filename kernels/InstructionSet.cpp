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

// As a number; none: unchosen.
static constexpr int unchosen = -1;
static std::atomic<int> chosen = unchosen;

std::optional<InstructionSet> chosenInstructionSet() {
    const int set = chosen.load(std::memory_order_relaxed);
    return set == unchosen ? std::nullopt : std::optional(static_cast<InstructionSet>(set));
}

void chooseInstructionSet(std::optional<InstructionSet> set) {
    chosen.store(set ? static_cast<int>(*set) : unchosen, std::memory_order_relaxed);
}

InstructionSet instructionSet() {
    static const InstructionSet widest = widestInstructionSet();
    return chosenInstructionSet().value_or(widest);
}

}  // namespace kernels
