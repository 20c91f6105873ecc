#include "frame/Pass.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>

Pass::Pass(SampleArray firstSignal, SampleArray secondSignal)
    : second(std::move(secondSignal)), first(std::move(firstSignal)) {
    result.length = std::max(first.length, second.length);
    const auto size = static_cast<std::size_t>(result.length);
    result.samples = std::make_unique_for_overwrite<double[]>(size);
    std::fill_n(result.samples.get(), size, std::numeric_limits<double>::quiet_NaN());
}
