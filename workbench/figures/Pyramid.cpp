#include "workbench/figures/Pyramid.h"

#include <algorithm>
#include <cmath>
#include <utility>

constexpr std::size_t ofLowestLevel = 8;  // samples in a stretch of it
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr Pyramid::Extremes nothing = {infinite, -infinite};

// Comparisons with NaN fail, and so it is left out.
static void include(Pyramid::Extremes& all, double value) {
    all.lowest = value < all.lowest ? value : all.lowest;
    all.highest = value > all.highest ? value : all.highest;
}

static void include(Pyramid::Extremes& all, const Pyramid::Extremes& more) {
    all.lowest = std::min(all.lowest, more.lowest);
    all.highest = std::max(all.highest, more.highest);
}

static Pyramid::Extremes shown(const Pyramid::Extremes& found) {
    return found.lowest <= found.highest ? found : Pyramid::Extremes();
}

static std::vector<Pyramid::Extremes> levelAbove(const std::vector<Pyramid::Extremes>& level) {
    std::vector<Pyramid::Extremes> above((level.size() + 1) / 2, nothing);
    for (std::size_t i = 0; i < level.size(); ++i) {
        include(above[i / 2], level[i]);
    }
    return above;
}

Pyramid::Pyramid(std::vector<double> levelZero) : samples(std::move(levelZero)) {
    Level level((samples.size() + ofLowestLevel - 1) / ofLowestLevel, nothing);
    Extremes numbers = nothing;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        include(level[i / ofLowestLevel], samples[i]);
        include(numbers, std::abs(samples[i]) < infinite
                             ? samples[i]
                             : std::numeric_limits<double>::quiet_NaN());
    }
    finite = shown(numbers);
    while (level.size() > 1) {
        Level above = levelAbove(level);
        levels.push_back(std::exchange(level, std::move(above)));
    }
    levels.push_back(std::move(level));
}

// From both ends inwards: at each level at most one stretch on either side is not covered by the
// level above.
Pyramid::Extremes Pyramid::extremes(std::size_t first, std::size_t last) const {
    Extremes found = nothing;
    last = std::min(last, samples.size());
    while (first < last && first % ofLowestLevel != 0) {
        include(found, samples[first++]);
    }
    while (first < last && last % ofLowestLevel != 0) {
        include(found, samples[--last]);
    }
    first /= ofLowestLevel;
    last /= ofLowestLevel;
    for (const Level& level : levels) {
        if (first >= last) {
            break;
        }
        if (first % 2 == 1) {
            include(found, level[first++]);
        }
        if (last % 2 == 1 && first < last) {
            include(found, level[--last]);
        }
        first /= 2;
        last /= 2;
    }
    return shown(found);
}
