#include "workbench/figures/Pyramid.h"

#include <algorithm>
#include <cmath>
#include <utility>

// fmin and fmax leave NaN out.
static Pyramid::Extremes joined(const Pyramid::Extremes& a, const Pyramid::Extremes& b) {
    return {std::fmin(a.lowest, b.lowest), std::fmax(a.highest, b.highest)};
}

Pyramid::Pyramid(std::vector<double> levelZero) : samples(std::move(levelZero)) {
    std::vector<Extremes> level((samples.size() + 1) / 2);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double value = samples[i];
        level[i / 2] = joined(level[i / 2], {value, value});
        if (std::isfinite(value)) {
            finite = joined(finite, {value, value});
        }
    }
    while (level.size() > 1) {
        std::vector<Extremes> above((level.size() + 1) / 2);
        for (std::size_t i = 0; i < level.size(); ++i) {
            above[i / 2] = joined(above[i / 2], level[i]);
        }
        levels.push_back(std::exchange(level, std::move(above)));
    }
    levels.push_back(std::move(level));
}

// From both ends inwards: at each level at most one stretch on either side is not covered by the
// level above.
Pyramid::Extremes Pyramid::extremes(std::size_t first, std::size_t last) const {
    Extremes found;
    last = std::min(last, samples.size());
    if (first < last && first % 2 == 1) {
        found = joined(found, {samples[first], samples[first]});
        ++first;
    }
    if (first < last && last % 2 == 1) {
        --last;
        found = joined(found, {samples[last], samples[last]});
    }
    for (std::size_t k = 0; k < levels.size() && first < last; ++k) {
        first /= 2;
        last /= 2;
        if (first % 2 == 1 && first < last) {
            found = joined(found, levels[k][first++]);
        }
        if (last % 2 == 1 && first < last) {
            found = joined(found, levels[k][--last]);
        }
    }
    return found;
}
