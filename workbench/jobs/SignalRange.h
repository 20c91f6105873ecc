#pragma once

#include <cstdint>
#include <limits>
#include <vector>

class SignalReader;

// What a channel of a signal holds.
struct ChannelRange {
    double smallest = std::numeric_limits<double>::infinity();
    double largest = -std::numeric_limits<double>::infinity();
    std::int64_t nonfinite = 0;  // NaN and infinity, which take no part in the range
};

// Reads all that a reader has left, in constant memory: one range a channel.
std::vector<ChannelRange> rangesOf(SignalReader& reader);
