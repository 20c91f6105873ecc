#include "kernels/contract/KernelCase.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <numeric>

namespace kernels {

static constexpr int lineDoubles = 8;

Samples::Samples(int length, int offset)
    : block(static_cast<std::size_t>(length) + 2 * std::size_t{lineDoubles}), count(length) {
    const auto address = reinterpret_cast<std::uintptr_t>(block.data()) / sizeof(double);
    const auto line = (lineDoubles - address % lineDoubles) % lineDoubles;
    first = line + static_cast<std::size_t>(offset);
}

Samples Input::take(int count) {
    Samples samples(count, at);
    for (int i = 0; i < count; ++i) {
        samples.data()[i] = values[next];
        next = (next + 1) % values.size();
    }
    return samples;
}

const std::vector<KernelCase>& kernelCases() {
    static const std::vector<KernelCase> all = [] {
        std::vector<KernelCase> cases;
        for (const auto& family : {signalCases(), transformCases(), hartleyCases(), matrixCases(),
                                   decompositionCases()}) {
            cases.insert(cases.end(), family.begin(), family.end());
        }
        return cases;
    }();
    return all;
}

std::ptrdiff_t firstDifference(std::span<const double> a, std::span<const double> b) {
    if (a.size() != b.size()) {
        return static_cast<std::ptrdiff_t>(std::min(a.size(), b.size()));
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        const bool same = std::bit_cast<std::uint64_t>(a[i]) == std::bit_cast<std::uint64_t>(b[i]);
        if (!same && !(std::isnan(a[i]) && std::isnan(b[i]))) {
            return static_cast<std::ptrdiff_t>(i);
        }
    }
    return -1;
}

std::vector<int> everySizeAnd(std::vector<int> edges) {
    std::vector<int> sizes(601);
    std::iota(sizes.begin(), sizes.end(), 0);
    sizes.insert(sizes.end(), edges.begin(), edges.end());
    return sizes;
}

}  // namespace kernels
