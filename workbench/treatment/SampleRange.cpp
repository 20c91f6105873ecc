#include "workbench/treatment/SampleRange.h"

#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>

// Bounds are typed to a few digits, and an axis is rounded: a sample that near a bound is inside.
static constexpr double nearBound = 1e-6;

SampleRange samplesIn(const Span& span, const std::optional<SignalAxis>& axis, double rate,
                      std::int64_t samples, const std::string& what) {
    const double start = axis ? axis->start : 0.0;
    const double step = axis ? axis->step : rate > 0.0 ? 1.0 / rate : 1.0;
    double first = (span.from - start) / step, last = (span.to - start) / step;
    if (step < 0.0) {
        std::swap(first, last);
    }
    const auto length = static_cast<double>(samples);
    const SampleRange range{
        static_cast<std::int64_t>(std::clamp(std::ceil(first - nearBound), 0.0, length)),
        static_cast<std::int64_t>(std::clamp(std::floor(last + nearBound) + 1.0, 0.0, length))};
    if (range.count() < 1) {
        throw Failure(fmt::format("{} {}:{} holds no sample; the axis goes from {:.6g} to {:.6g}",
                                  what, span.from, span.to, start, start + step * (length - 1.0)));
    }
    return range;
}
