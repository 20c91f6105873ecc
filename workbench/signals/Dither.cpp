#include "workbench/signals/Dither.h"

#include <cmath>
#include <cstdint>

// Both numbers come from one of 64 bits, exactly.
double Dither::next() {
    const std::uint64_t bits = random();
    const auto upper = static_cast<double>(bits >> 32);
    const auto lower = static_cast<double>(bits & 0xffffffff);
    return std::ldexp(upper - lower, -32);
}
