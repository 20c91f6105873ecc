#include "workbench/jobs/jobSize.h"

#include "kernels/InstructionSet.h"
#include "workbench/messages/Failure.h"
#include "workbench/methods/Method.h"
#include "workbench/module/ModuleRun.h"
#include "workbench/system/systemMemory.h"

#include <fmt/format.h>

#include <algorithm>

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

JobSize sizeOfRun(const Method& method, const FendraSettings& settings, double length,
                  double shorter) {
    JobSize size;
    size.multiplyAdds = method.multiplyAdds(length, shorter, settings);
    size.seconds = size.multiplyAdds / multiplyAddsPerSecond();
    return size;
}

JobSize sizeOf(const Method& method, const FendraSettings& settings, const ModuleRun& moduleRun,
               int threads) {
    JobSize size;
    size.rounds = moduleRun.rounds();
    for (std::int64_t round = 0; round < size.rounds; ++round) {
        const JobSize one =
            sizeOfRun(method, settings, static_cast<double>(moduleRun.resultLength(round)),
                      static_cast<double>(moduleRun.shorterLength(round)));
        size.multiplyAdds += moduleRun.channels() * one.multiplyAdds;
        size.seconds += moduleRun.channels() * one.seconds;
    }
    const std::int64_t parts = size.rounds * moduleRun.channels();
    size.seconds *= partsInTurn(parts, threads) / static_cast<double>(parts);
    return size;
}

double partsInTurn(std::int64_t parts, int threads) {
    return static_cast<double>((parts + threads - 1) / threads);
}

int threadsFor(int wanted, const Method& method, const JobPart& part) {
    constexpr double secondsPerSample = 3e-8, shortest = 5e-5;
    const auto length = static_cast<double>(part.length);
    if (part.size.seconds + secondsPerSample * length < shortest) {
        return 1;
    }
    const double bytes = method.bytes(length) + sizeof(double) * part.values;
    const double most = std::min(static_cast<double>(wanted), static_cast<double>(part.parts));
    return static_cast<int>(std::max(1.0, std::min(most, freeMemory() / bytes)));
}

// Some 250 points, each of half as many bins as samples.
double secondsToChoose(std::int64_t samples) {
    constexpr double points = 250.0, secondsPerBin = 2e-8;
    return points * secondsPerBin * static_cast<double>(samples) / 2.0;
}

static constexpr double gigabyte = 1e9;

void checkMemory(const Method& method, std::int64_t length) {
    const double needed = method.bytes(static_cast<double>(length)), free = freeMemory();
    if (needed > free) {
        throw Failure(
            fmt::format("the filter for {} samples takes {:.3g} GB of memory, and {:.3g} GB "
                        "are free; choose another method, or cut the signals",
                        length, needed / gigabyte, free / gigabyte));
    }
}

void checkKernelMemory(const SignalInfo& kernel, double needed) {
    const double free = freeMemory();
    if (needed > free) {
        throw Failure(
            fmt::format("{}, the shorter signal, takes {:.3g} GB of memory as a kernel, and {:.3g} "
                        "GB are free; shorten it",
                        kernel.source.shown, needed / gigabyte, free / gigabyte));
    }
}
