#include "workbench/jobs/SignalRange.h"

#include "workbench/messages/Printable.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

std::vector<ChannelRange> rangesOf(SignalReader& reader) {
    std::vector<ChannelRange> all(static_cast<std::size_t>(reader.info().channels));
    const std::int64_t pieceLength = std::max<std::int64_t>(1, 65536 / reader.info().channels);
    std::vector<double> piece(static_cast<std::size_t>(pieceLength) * all.size());
    std::int64_t before = 0;
    while (const std::int64_t got = reader.read(piece.data(), pieceLength)) {
        for (std::size_t i = 0; i < static_cast<std::size_t>(got) * all.size(); ++i) {
            ChannelRange& range = all[i % all.size()];
            if (std::isfinite(piece[i])) {
                range.smallest = std::min(range.smallest, piece[i]);
                if (piece[i] > range.largest) {
                    range.largest = piece[i];
                    range.largestAt = before + static_cast<std::int64_t>(i / all.size());
                }
            } else {
                ++range.nonfinite;
            }
        }
        before += got;
    }
    return all;
}

std::optional<double> placeOf(const SignalInfo& info, std::int64_t index) {
    const auto i = static_cast<double>(index);
    if (info.rate > 0.0) {
        const bool falls = info.axis && info.axis->step < 0.0;
        return (info.axis ? info.axis->start : 0.0) + (falls ? -i : i) / info.rate;
    }
    return info.axis ? std::optional(info.axis->start + i * info.axis->step) : std::nullopt;
}

// In the largest unit that leaves a digit before the point.
static std::string timeText(double seconds) {
    const double magnitude = std::abs(seconds);
    if (magnitude >= 1.0 || magnitude == 0.0) {
        return fmt::format("{:.6g} s", seconds);
    }
    return magnitude >= 1e-3   ? fmt::format("{:.6g} ms", seconds * 1e3)
           : magnitude >= 1e-6 ? fmt::format("{:.6g} us", seconds * 1e6)
                               : fmt::format("{:.6g} ns", seconds * 1e9);
}

std::string placeText(const SignalInfo& info, const ChannelRange& range) {
    if (!std::isfinite(range.largest)) {
        return "none";
    }
    std::string text = fmt::format("index {}", range.largestAt);
    const std::optional<double> place = placeOf(info, range.largestAt);
    if (!place) {
        return text;
    }
    return text + ", " +
           (info.rate > 0.0 ? timeText(*place)
                            : fmt::format("{} {:.6g}", printable(info.axis->name), *place));
}
