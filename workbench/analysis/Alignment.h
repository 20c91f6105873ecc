#pragma once

#include <cstdint>
#include <vector>

// How a signal has to be shifted to be nearest to another one.
struct Alignment {
    std::int64_t shift = 0;  // positive: to later samples
    double error = 0.0;      // what is left then: root of the summed squared differences over that
                             // of the other's summed squares
};

// The shift s, from -N/2 to N/2, at which x[(i - s) mod N] is nearest to y[i]: where their periodic
// correlation is largest. Both have N samples, y not all zero. std::bad_alloc.
Alignment bestAlignment(const std::vector<double>& x, const std::vector<double>& y);
