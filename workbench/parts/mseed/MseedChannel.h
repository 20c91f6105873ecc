#pragma once

#include "workbench/parts/mseed/MseedRecords.h"

#include <cstdint>
#include <map>
#include <string>

// A channel of a miniSEED file: its records in the order of the file, each of which begins where
// the one before it ends.
class MseedChannel {
public:
    // The record under way is its first.
    explicit MseedChannel(const MseedRecords& first);

    // The record under way is its next. It is a gap or an overlap if it begins half a sample before
    // or after it is due, and more than the 0.1 ms to which headers give times.
    void add(const MseedRecords& next);

    std::string encoding;
    double rate;     // Hz
    hptime_t start;  // of the first sample
    std::int64_t samples = 0;
    std::string refusal;  // why it is not a signal; empty: it is one
    std::string fault;    // why the signal cannot be read, and where; empty: it is continuous

private:
    [[nodiscard]] std::string faultOf(const MseedRecords& next) const;

    double due;  // in microseconds, of the sample that comes next
};

// All channels of a file, by name: "IU.ANMO.00.BHZ".
std::map<std::string, MseedChannel> channelsOf(MseedRecords& records);
