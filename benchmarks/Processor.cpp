#include "benchmarks/Processor.h"

#include "benchmarks/processorName.h"
#include "kernels/Caches.h"
#include "kernels/MeasuredForm.h"

#include <fmt/core.h>

#include <thread>

static const char* compilerName() {
#if defined(__clang__)
    return __VERSION__;
#else
    return "g++ " __VERSION__;
#endif
}

// "L1d 32 kB, L2 512 kB, L3 32768 kB"
static std::string describe(const kernels::Caches& caches) {
    return fmt::format("L1d {} kB, L2 {} kB, L3 {} kB", caches.firstLevel / 1024,
                       caches.secondLevel / 1024, caches.thirdLevel / 1024);
}

static std::string instructionSets() {
    std::string text;
    for (const kernels::InstructionSet set : kernels::availableInstructionSets()) {
        text += fmt::format("{}{}{}", text.empty() ? "" : ", ", kernels::instructionSetName(set),
                            set == kernels::instructionSet() ? " (in use)" : "");
    }
    return text;
}

// "convolution avx2, elimination avx2, product avx2": kernels that choose their form by a trial.
static std::string chosenForms() {
    std::string text;
    for (const auto& [kernel, set] : kernels::formsInUse()) {
        text += fmt::format("{}{} {}", text.empty() ? "" : ", ", kernel,
                            kernels::instructionSetName(set));
    }
    return text;
}

std::vector<std::string> describeProcessor() {
    return {fmt::format("{}, {} logical cores; {}", processorName(),
                        std::thread::hardware_concurrency(), describe(kernels::caches())),
            fmt::format("{}; instruction sets: {}", compilerName(), instructionSets()),
            "forms by trial: " + chosenForms()};
}
