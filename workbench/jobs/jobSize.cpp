#include "workbench/jobs/jobSize.h"

#include "kernels/InstructionSet.h"
#include "workbench/messages/Failure.h"
#include "workbench/methods/Method.h"
#include "workbench/module/ModuleRun.h"
#include "workbench/system/systemMemory.h"

#include <fmt/format.h>

#include <cstdint>

// About what a core of 2024 does, at 8, 4 or 2 side by side.
static double multiplyAddsPerSecond() {
    switch (kernels::instructionSet()) {
        case kernels::InstructionSet::avx512:
            return 4e10;
        case kernels::InstructionSet::avx2:
            return 2e10;
        default:
            return 1e10;
    }
}

JobSize sizeOf(const Method& method, const FendraSettings& settings, const ModuleRun& moduleRun) {
    JobSize size;
    size.rounds = moduleRun.rounds();
    for (std::int64_t round = 0; round < size.rounds; ++round) {
        size.multiplyAdds +=
            moduleRun.channels() *
            method.multiplyAdds(static_cast<double>(moduleRun.resultLength(round)),
                                static_cast<double>(moduleRun.shorterLength(round)), settings);
    }
    size.seconds = size.multiplyAdds / multiplyAddsPerSecond();
    return size;
}

void checkMemory(const Method& method, const ModuleRun& moduleRun) {
    constexpr double gigabyte = 1e9;
    const std::int64_t length = moduleRun.resultLength(0);
    const double needed = method.bytes(static_cast<double>(length)), free = freeMemory();
    if (needed > free) {
        throw Failure(
            fmt::format("the filter for {} samples takes {:.3g} GB of memory, and {:.3g} GB "
                        "are free; cut the signals with --block",
                        length, needed / gigabyte, free / gigabyte));
    }
}
