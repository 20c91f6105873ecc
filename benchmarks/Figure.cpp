#include "benchmarks/Figure.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>

// The value below which a share of the sorted samples lies.
static double quantile(const std::vector<double>& sorted, double share) {
    const double place = share * static_cast<double>(sorted.size() - 1);
    const auto below = static_cast<std::size_t>(place);
    const std::size_t above = std::min(below + 1, sorted.size() - 1);
    return std::lerp(sorted[below], sorted[above], place - static_cast<double>(below));
}

Figure figureOf(std::vector<double> samples) {
    std::sort(samples.begin(), samples.end());
    return {quantile(samples, 0.5), (quantile(samples, 0.75) - quantile(samples, 0.25)) / 2.0};
}

Figure ratioOf(const std::vector<double>& dividends, const std::vector<double>& divisors) {
    std::vector<double> ratios;
    for (std::size_t i = 0; i < std::max(dividends.size(), divisors.size()); ++i) {
        ratios.push_back(dividends[std::min(i, dividends.size() - 1)] /
                         divisors[std::min(i, divisors.size() - 1)]);
    }
    return figureOf(ratios);
}

std::string textOf(const Figure& figure) {
    int decimals = figure.value < 9.995 ? 2 : figure.value < 99.95 ? 1 : 0;
    while (decimals > 0 && figure.spread * std::pow(10.0, decimals) >= 99.5) {
        --decimals;
    }
    char text[64];
    std::snprintf(text, sizeof text, "%.*f(%.0f)", decimals, figure.value,
                  figure.spread * std::pow(10.0, decimals));
    return text;
}
