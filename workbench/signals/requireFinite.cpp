#include "workbench/signals/requireFinite.h"

#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

void requireFinite(const SignalInfo& info, std::int64_t first, const double* samples,
                   std::int64_t count) {
    const double* const end = samples + count * info.channels;
    const double* const odd =
        std::find_if(samples, end, [](double sample) { return !std::isfinite(sample); });
    if (odd != end) {
        const std::int64_t index = odd - samples;
        throw Failure(fmt::format(
            "{}, sample {}, channel {}: {} is not a finite number; use --allow-nonfinite to let it "
            "through",
            info.source.shown, first + index / info.channels + 1, index % info.channels + 1, *odd));
    }
}
