#include "workbench/jobs/ResultTap.h"

#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>

// Samples of each column that are scaled at a time.
static std::int64_t pieceLength(int columns) {
    return std::max(1, 65536 / columns);
}

ResultTap::ResultTap(SignalWriter& target, Comparison* withTruth, int resultChannels,
                     Handling resultHandling)
    : writer(target),
      comparison(withTruth),
      channels(resultChannels),
      handling(std::move(resultHandling)),
      columns(resultChannels) {
    if (handling.gain.kind == Gain::Kind::decibels) {
        factor = factorOf(handling.gain.decibels);
    } else if (handling.gain.kind == Gain::Kind::normalize) {
        waiting.emplace();
    }
}

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
            channels == 1 ? "" : fmt::format(" of channel {}", index % channels + 1),
            handling.onOverflow));
    }
}

void ResultTap::measure(const double* interleaved, std::int64_t samples) {
    const double* const end = interleaved + samples * channels;
    for (const double* value = interleaved; value != end; ++value) {
        minimum = std::min(minimum, *value);
        maximum = std::max(maximum, *value);
        const double magnitude = std::abs(*value);
        peak =
            magnitude > peak && magnitude <= std::numeric_limits<double>::max() ? magnitude : peak;
    }
    if (!handling.allowNonfinite && !std::isfinite(scaled(peak))) {
        throw Failure(
            fmt::format("the result reaches {:.3g}, and the gain takes it beyond the "
                        "range of numbers; lower --gain",
                        peak));
    }
}

void ResultTap::take(const double* interleaved, std::int64_t samples,
                     const std::vector<double>& written) {
    if (!handling.allowNonfinite) {
        refuseNonfinite(interleaved, samples);
    }
    measure(interleaved, samples);
    if (comparison != nullptr) {
        comparison->add(interleaved, samples);
    }
    if (!written.empty()) {
        columns = static_cast<int>(std::ssize(written) / samples);
    }
    const double* const rows = written.empty() ? interleaved : written.data();
    if (waiting) {
        waiting->add(rows, static_cast<std::size_t>(samples * columns));
    } else {
        pass(rows, samples);
    }
    taken += samples;
}

void ResultTap::pass(const double* rows, std::int64_t samples) {
    std::vector<double> piece;
    while (samples > 0) {
        const std::int64_t count = std::min(samples, pieceLength(columns));
        const std::int64_t values = count * columns;
        const double* output = rows;
        if (handling.gain.kind != Gain::Kind::none) {
            piece.resize(static_cast<std::size_t>(values));
            std::transform(rows, rows + values, piece.begin(),
                           [this](double value) { return scaled(value); });
            output = piece.data();
        }
        if (scaled(peak) > 1.0) {
            beyondFullScale += std::count_if(output, output + values,
                                             [](double value) { return std::abs(value) > 1.0; });
        }
        if (handling.digested) {
            digest.add(output, static_cast<std::size_t>(values));
        }
        writer.write(output, count);
        rows += values;
        samples -= count;
    }
}

void ResultTap::finish() {
    if (!waiting) {
        return;
    }
    divisor = peak > 0.0 ? peak : 1.0;
    const auto most = static_cast<std::size_t>(pieceLength(columns) * columns);
    for (std::vector<double> rows = waiting->take(most); !rows.empty();
         rows = waiting->take(most)) {
        pass(rows.data(), std::ssize(rows) / columns);
    }
}

void ResultTap::describe(RunRecord& record) const {
    record.minimum = scaled(minimum);
    record.maximum = scaled(maximum);
    record.beyondFullScale = beyondFullScale;
    record.digest = handling.digested ? digest.hex() : "";
    if (comparison != nullptr) {
        record.error = comparison->error();
    }
    if (record.uncertainty) {
        record.uncertainty->halfWidth = scaled(record.uncertainty->halfWidth);
    }
    for (ResponseRecord& response : record.responses) {
        response.peak = scaled(response.peak);
        response.noise = scaled(response.noise);
    }
    if (handling.gain.kind == Gain::Kind::normalize) {
        record.gain = GainRecord{-decibelsOf(divisor), peak};
    } else if (handling.gain.kind == Gain::Kind::decibels) {
        record.gain = GainRecord{handling.gain.decibels, {}};
    }
}
