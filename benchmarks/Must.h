#pragma once

#include "benchmarks/Figure.h"
#include "benchmarks/Job.h"

#include <string>
#include <vector>

// What a kind of work has to reach: to be so many times as fast as a rival, or so large a share of
// the peak.
struct Must {
    // The peak in the place of a rival.
    static constexpr const char* peak = "peak";

    std::string rival;
    double least;
    std::vector<Size> sizes = {};  // all, if none is named

    [[nodiscard]] bool holdsAt(Size size) const;
};

// How a figure stands to what it has to reach.
enum class Standing {
    met,
    doubtful,  // missed by no more than its spread
    missed
};
Standing standingOf(const Figure& found, double least);

// What is required of the rival (or the peak) at a size: the most that a must asks for; 0: nothing.
double leastOf(const std::vector<Must>& musts, const std::string& rival, Size size);
