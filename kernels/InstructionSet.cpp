#include "kernels/InstructionSet.h"

#include <atomic>

InstructionSet widestInstructionSet() {
#if defined(__x86_64__) || defined(__i386__)
    if (__builtin_cpu_supports("avx512f") != 0) {
        return InstructionSet::avx512;
    }
    if (__builtin_cpu_supports("avx2") != 0) {
        return InstructionSet::avx2;
    }
#endif
    return InstructionSet::baseline;
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
