#include "workbench/jobs/ResultTap.h"

#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>

ResultTap::ResultTap(SignalWriter& target, Comparison* withTruth, int resultChannels,
                     bool allowNonfinite, std::string onOverflow)
    : writer(target),
      comparison(withTruth),
      channels(resultChannels),
      nonfinite(allowNonfinite),
      advice(std::move(onOverflow)) {}

// A result with NaN or infinity looks like a file that succeeded until somebody reads it.
void ResultTap::refuseNonfinite(const double* interleaved, std::int64_t samples) const {
    const double* const end = interleaved + samples * channels;
    const double* const odd =
        std::find_if(interleaved, end, [](double x) { return !std::isfinite(x); });
    if (odd != end) {
        const std::int64_t index = odd - interleaved;
        throw Failure(fmt::format(
            "the result is {} at sample {}{}: {}; --allow-nonfinite lets it through",
            std::isnan(*odd) ? std::abs(*odd) : *odd,  // the sign of a NaN means nothing
            taken + index / channels + 1,
            channels == 1 ? "" : fmt::format(" of channel {}", index % channels + 1), advice));
    }
}

void ResultTap::take(const double* interleaved, std::int64_t samples,
                     const std::vector<double>& written) {
    if (!nonfinite) {
        refuseNonfinite(interleaved, samples);
    }
    const double* const end = interleaved + samples * channels;
    for (const double* value = interleaved; value != end; ++value) {
        minimum = std::min(minimum, *value);
        maximum = std::max(maximum, *value);
    }
    if (comparison != nullptr) {
        comparison->add(interleaved, samples);
    }
    const double* const first = written.empty() ? interleaved : written.data();
    digest.add(first,
               written.empty() ? static_cast<std::size_t>(samples * channels) : written.size());
    writer.write(first, samples);
    taken += samples;
}

void ResultTap::describe(RunRecord& record) const {
    record.minimum = minimum;
    record.maximum = maximum;
    record.digest = digest.hex();
    if (comparison != nullptr) {
        record.error = comparison->error();
    }
}
