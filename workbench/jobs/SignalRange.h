#pragma once

#include "workbench/signals/SignalReader.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

// What a channel of a signal holds.
struct ChannelRange {
    double smallest = std::numeric_limits<double>::infinity();
    double largest = -std::numeric_limits<double>::infinity();
    std::int64_t largestAt = 0;  // index of the first of the largest values, from 0
    std::int64_t nonfinite = 0;  // NaN and infinity, which take no part in the range
};

// Reads all that a reader has left, in constant memory: one range a channel.
std::vector<ChannelRange> rangesOf(SignalReader& reader);

// Where a sample stands, in the unit of the axis, or in seconds if the signal has a rate; index
// from 0. Empty if neither is known.
std::optional<double> placeOf(const SignalInfo& info, std::int64_t index);

// Where the largest value stands: "index 512, 0.73 ms", "index 285, channel 685"; "none" where no
// value is finite.
std::string placeText(const SignalInfo& info, const ChannelRange& range);
