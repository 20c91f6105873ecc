#include "workbench/jobs/ModuleConvolution.h"

#include <algorithm>
#include <limits>
#include <utility>

// The module sums over the m - 1 samples before a block in vain, so the block is long beside them,
// and long beside the work of calling the module.
static std::int64_t blockOf(std::int64_t taps, std::int64_t given) {
    constexpr std::int64_t longest = std::numeric_limits<std::int32_t>::max(), shortest = 4096;
    return std::min(given == 0 ? std::max(16 * taps, shortest) : given, longest - (taps - 1));
}

ModuleConvolution::ModuleConvolution(DriverPool& modules, int lag, std::vector<double> kernelTaps,
                                     std::int64_t givenLength)
    : pool(modules),
      late(lag),
      taps(std::move(kernelTaps)),
      blockLength(blockOf(std::ssize(taps), givenLength)) {}

// On its way through the module a window is copied into a stream, read, extended, and answered.
BlockConvolution::Demand ModuleConvolution::demand(std::int64_t taps, std::int64_t givenLength) {
    const std::int64_t block = blockOf(taps, givenLength);
    const auto m = static_cast<double>(taps);
    const double window = static_cast<double>(block) + m;
    return {block, m * sizeof(double), 5.0 * (window + m) * sizeof(double)};
}

// With the window as long as the result, sample i of the block stands at i + m - 1, and as late.
std::vector<double> ModuleConvolution::convolve(const double* window, std::int64_t count) const {
    const std::int64_t length = history() + count;
    std::vector<double> result;
    pool.use([&](ModuleDriver& driver) {
        driver.feed(0, window, length, false);
        driver.feed(1, taps.data(), std::ssize(taps), false);
        driver.step();
        result = driver.takeSignal(length);
    });
    std::rotate(result.data(), result.data() + (history() + late) % length, result.data() + length);
    result.resize(static_cast<std::size_t>(count));
    return result;
}
