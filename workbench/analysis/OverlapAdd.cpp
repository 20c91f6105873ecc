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
    : taps(std::move(kernelTaps)),
      blockLength(blockOf(std::ssize(taps), givenLength)),
      tail(taps.size() - 1) {}

double OverlapAdd::bytes(std::int64_t taps, std::int64_t givenLength) {
    const std::int64_t length = transformLength(blockOf(taps, givenLength) + taps - 1);
    return static_cast<double>(4 * length + 2 * taps) * sizeof(double);
}

void OverlapAdd::add(const double* samples, std::int64_t count, std::vector<double>& ready) {
    while (count > 0) {
        const std::int64_t taken = std::min(count, blockLength - std::ssize(work));
        work.insert(work.end(), samples, samples + taken);
        samples += taken;
        count -= taken;
        if (std::ssize(work) == blockLength) {
            convolveBlock(ready);
        }
    }
}

void OverlapAdd::finish(std::vector<double>& ready) {
    if (!work.empty()) {
        convolveBlock(ready);
    }
    if (!even.empty()) {
        ready.insert(ready.end(), tail.begin(), tail.end());
    }
}

// At the length that the first block needs, which is shorter where the whole signal is.
void OverlapAdd::transformTaps() {
    const auto length =
        static_cast<std::size_t>(transformLength(std::ssize(work) + std::ssize(tail)));
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
void OverlapAdd::multiplySpectra() {
    const std::size_t length = work.size();
    double* const x = work.data();
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

// Each sample is the sum over its blocks in ascending order.
void OverlapAdd::convolveBlock(std::vector<double>& ready) {
    if (even.empty()) {
        transformTaps();
    }
    const std::size_t filled = work.size(), kept = tail.size();
    const std::size_t length = even.size() == 1 ? 1 : 2 * (even.size() - 1);
    work.resize(length);
    HartleyTransform().hartley(work.data(), static_cast<int>(length), 0);
    multiplySpectra();
    HartleyTransform().hartley(work.data(), static_cast<int>(length), 0);
    for (std::size_t i = 0; i < std::min(filled, kept); ++i) {
        work[i] = tail[i] + work[i];
    }
    for (std::size_t i = 0; i < kept; ++i) {
        const double earlier = i + filled < kept ? tail[i + filled] : 0.0;
        tail[i] = earlier + work[filled + i];
    }
    ready.insert(ready.end(), work.begin(), work.begin() + static_cast<std::ptrdiff_t>(filled));
    work.clear();
}
