#include "benchmarks/Processor.h"

#include "kernels/InstructionSet.h"

#include <fmt/core.h>

#include <fstream>
#include <thread>

static std::string processorName() {
    std::ifstream lines("/proc/cpuinfo");
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("model name")) {
            return line.substr(line.find(':') + 2);
        }
    }
    return "unknown processor";
}

static const char* compilerName() {
#if defined(__clang__)
    return __VERSION__;
#else
    return "g++ " __VERSION__;
#endif
}

static std::string wordOf(const std::string& path) {
    std::string word;
    std::ifstream(path) >> word;
    return word;
}

// "L1d 32K, L2 512K, L3 32768K"
static std::string caches() {
    std::string text;
    for (int index = 0;; ++index) {
        const std::string folder =
            fmt::format("/sys/devices/system/cpu/cpu0/cache/index{}/", index);
        const std::string level = wordOf(folder + "level"), type = wordOf(folder + "type");
        if (level.empty()) {
            return text.empty() ? "caches unknown" : text;
        }
        if (type != "Instruction") {
            text += fmt::format("{}L{}{} {}", text.empty() ? "" : ", ", level,
                                type == "Data" ? "d" : "", wordOf(folder + "size"));
        }
    }
}

static std::string instructionSets() {
    std::string text;
    for (const kernels::InstructionSet set : kernels::availableInstructionSets()) {
        text += fmt::format("{}{}{}", text.empty() ? "" : ", ", kernels::instructionSetName(set),
                            set == kernels::instructionSet() ? " (in use)" : "");
    }
    return text;
}

std::vector<std::string> describeProcessor() {
    return {fmt::format("{}, {} logical cores; {}", processorName(),
                        std::thread::hardware_concurrency(), caches()),
            fmt::format("{}; instruction sets: {}", compilerName(), instructionSets())};
}
