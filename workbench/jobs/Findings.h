#pragma once

#include "workbench/methods/Method.h"
#include "workbench/module/ModuleRun.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

// Collects, channel by channel and round by round, what speaks against a result of a method.
class Findings {
public:
    struct Run {
        std::int64_t rounds = 1;
        int channels = 1, kernelChannels = 1;
        bool kernelServesAll = true;  // one kernel is that of all rounds
        bool judged = true;           // remarks are wanted
    };
    Findings(const Method& runMethod, const FendraSettings& runSettings, const Run& run);

    void add(const ModuleRun::Channel& channel);

    // Whether any sample of the signals that were added is not zero.
    [[nodiscard]] bool sawSignal() const { return signalSeen; }

    // For people, each with its block and channel where there are several; the first ten.
    [[nodiscard]] std::vector<std::string> remarks() const;

private:
    const KernelGain& gainOf(const ModuleRun::Channel& channel);
    void judge(const ModuleRun::Channel& channel);

    const Method& method;
    FendraSettings settings;
    bool severalRounds, severalChannels, kernelStays, judged;
    std::vector<std::optional<KernelGain>> gains;  // of the kernel's channels
    std::vector<std::string> found;
    std::size_t left = 0;  // beyond those that are kept
    bool signalSeen = false;
};

// The gain of a kernel in a run of that length, zeros appended. What cannot be computed for want
// of memory has no bins.
KernelGain kernelGain(const std::vector<double>& kernel, std::size_t length);
