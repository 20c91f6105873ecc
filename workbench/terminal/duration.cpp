#include "workbench/terminal/duration.h"

#include <fmt/format.h>

#include <cmath>

std::string duration(double seconds) {
    constexpr double minute = 60.0;
    const long long whole = std::llround(seconds);
    return seconds < minute ? fmt::format("{} s", whole)
                            : fmt::format("{} min {} s", whole / 60, whole % 60);
}
