#include "workbench/jobs/jobSize.h"

#include "kernels/InstructionSet.h"
#include "workbench/messages/Failure.h"
#include "workbench/methods/Method.h"
#include "workbench/module/ModuleRun.h"
#include "workbench/system/systemMemory.h"

#include <fmt/format.h>

#include <algorithm>
#include <bit>

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
    const std::int64_t turns = (parts + threads - 1) / threads;
    return static_cast<double>(turns);
}

int threadsFor(int wanted, const Method& method, const JobPart& part) {
    constexpr double secondsPerSample = 3e-8, shortest = 5e-5;
    const auto length = static_cast<double>(part.length);
    if (part.parts == 1 || part.size.seconds + secondsPerSample * length < shortest) {
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
// Bytes for which it is not worth to ask the system.
static constexpr double alwaysFree = 16e6;

// Values that one channel has in memory at the peak of a run, measured. Transforms at a length that
// is not a power of two work on some of twice to four times as many.
static double valuesOfRun(const Method& method, std::int64_t length) {
    const auto samples = static_cast<double>(length);
    const bool convolves = method.direction == FendraSettings::convolution;
    if (convolves && method.code == FendraSettings::timeDomain) {
        return 2.0 * samples;
    }
    const auto size = static_cast<std::uint64_t>(length);
    const double chirp =
        std::has_single_bit(size) ? 0.0 : static_cast<double>(std::bit_ceil(2 * size));
    return (convolves ? 5.0 : 9.0) * samples + 4.5 * chirp;
}

void checkMemory(const Method& method, std::int64_t length, double values) {
    const double filter = method.bytes(static_cast<double>(length));
    const double needed = filter + sizeof(double) * (values + valuesOfRun(method, length));
    if (needed <= alwaysFree) {
        return;
    }
    const double free = freeMemory();
    if (filter > free) {
        throw Failure(
            fmt::format("the filter for {} samples takes {:.3g} GB of memory, and {:.3g} GB "
                        "are free; choose another method, or cut the signals",
                        length, filter / gigabyte, free / gigabyte));
    }
    if (needed > free) {
        throw Failure(fmt::format(
            "a run over {} samples at once takes {:.3g} GB of memory or more, and {:.3g} GB are "
            "free; {}",
            length, needed / gigabyte, free / gigabyte,
            method.direction == FendraSettings::convolution
                ? "convolve with --pad, which takes little for signals of any length"
                : "deconvolve a part of the signal, or cut both with --block"));
    }
}

void checkWholeMemory(const Method& method, const SignalInfo& signal, const SignalInfo& kernel,
                      bool pads) {
    const std::int64_t length =
        pads ? signal.samples + kernel.samples - 1 : std::max(signal.samples, kernel.samples);
    const auto values = [](const SignalInfo& info, std::int64_t samples) {
        return info.channels * static_cast<double>(samples);
    };
    const SignalInfo& wider = signal.channels < kernel.channels ? kernel : signal;
    checkMemory(method, length,
                values(signal, signal.samples) + values(kernel, kernel.samples) +
                    values(wider, signal.samples));
}

void checkKernelMemory(const SignalInfo& kernel, double needed) {
    const double free = needed <= alwaysFree ? needed : freeMemory();
    if (needed > free) {
        throw Failure(
            fmt::format("{}, the shorter signal, takes {:.3g} GB of memory as a kernel, and {:.3g} "
                        "GB are free; shorten it",
                        kernel.source.shown, needed / gigabyte, free / gigabyte));
    }
}
