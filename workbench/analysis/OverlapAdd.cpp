#include "workbench/analysis/OverlapAdd.h"

#include "transform/HartleyTransform.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <utility>

static constexpr std::int64_t longestTransform = std::int64_t{1} << 30;

static std::int64_t transformLength(std::int64_t samples) {
    return static_cast<std::int64_t>(std::bit_ceil(static_cast<std::uint64_t>(samples)));
}

// Measured from 1 to 300 000 taps: transforms of 3 to 6 times the taps cost least, per sample;
// longer ones leave the caches, and those of less than 1024 cost no less.
static std::int64_t cheapestBlock(std::int64_t taps) {
    constexpr std::int64_t shortest = 1024;
    const std::int64_t length = transformLength(std::max(3 * taps, shortest));
    return std::min(length, longestTransform) - taps + 1;
}

static std::int64_t blockOf(std::int64_t taps, std::int64_t given) {
    return given == 0 ? cheapestBlock(taps) : std::min(given, longestTransform - taps + 1);
}

OverlapAdd::OverlapAdd(std::vector<double> kernelTaps, std::int64_t givenLength)
    : taps(std::move(kernelTaps)), blockLength(blockOf(std::ssize(taps), givenLength)) {}

BlockConvolution::Demand OverlapAdd::demand(std::int64_t taps, std::int64_t givenLength) {
    const std::int64_t block = blockOf(taps, givenLength);
    const auto transformed = static_cast<double>(transformLength(block + taps - 1));
    return {block, (2.0 * transformed + static_cast<double>(taps)) * sizeof(double),
            transformed * sizeof(double)};
}

void OverlapAdd::prepare(std::int64_t firstBlock) {
    length = static_cast<std::size_t>(transformLength(firstBlock + std::ssize(taps) - 1));
    std::vector<double> spectrum(taps);
    spectrum.resize(length);
    HartleyTransform().hartley(spectrum.data(), static_cast<int>(length), 1);
    even.resize(length / 2 + 1);
    odd.resize(length / 2 + 1);
    for (std::size_t j = 0; j < even.size(); ++j) {
        const double mirrored = spectrum[(length - j) % length];
        even[j] = (spectrum[j] + mirrored) / 2.0;
        odd[j] = (spectrum[j] - mirrored) / 2.0;
    }
}

// Elements 0 and N / 2 are their own mirror images.
void OverlapAdd::multiplySpectra(double* x) const {
    const double *const e = even.data(), *const o = odd.data();
    x[0] *= e[0];
    if (length > 1) {
        x[length / 2] *= e[length / 2];
    }
    for (std::size_t j = 1; j < length / 2; ++j) {
        const double mirrored = x[length - j];
        x[length - j] = mirrored * e[j] - x[j] * o[j];
        x[j] = x[j] * e[j] + mirrored * o[j];
    }
}

std::vector<double> OverlapAdd::convolve(const double* window, std::int64_t count) const {
    std::vector<double> work(length);
    std::copy_n(window, count, work.data());
    HartleyTransform().hartley(work.data(), static_cast<int>(length), 0);
    multiplySpectra(work.data());
    HartleyTransform().hartley(work.data(), static_cast<int>(length), 0);
    work.resize(static_cast<std::size_t>(count) + taps.size() - 1);
    return work;
}
