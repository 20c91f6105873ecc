#pragma once

#include "workbench/signals/SignalAxis.h"
#include "workbench/treatment/Treatment.h"

#include <cstdint>
#include <optional>
#include <string>

// Samples first to last, last excluded.
struct SampleRange {
    std::int64_t first = 0, last = 0;

    [[nodiscard]] std::int64_t count() const { return last - first; }
};

// The samples of a signal that stand in a part of its axis. Without an axis the part is in seconds
// where the rate is known, else in samples, counted from 0.
//   what      option that named the part, for messages
//   Failure   no sample stands there
SampleRange samplesIn(const Span& span, const std::optional<SignalAxis>& axis, double rate,
                      std::int64_t samples, const std::string& what);
