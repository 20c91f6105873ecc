#include "workbench/files/text/GapFiller.h"

#include <algorithm>
#include <cmath>

static double between(double a, double b, std::size_t k, std::size_t n) {
    const auto after = static_cast<double>(k), steps = static_cast<double>(n + 1);
    if (a == b) {
        return a;
    }
    const double sum = a * (steps - after) + b * after;
    return std::isfinite(sum) ? sum / steps : a * (1.0 - after / steps) + b * (after / steps);
}

std::optional<std::size_t> GapFiller::add(const std::vector<double>& row,
                                          const std::vector<bool>& missing) {
    rows.push_back(row);
    for (std::size_t column = 0; column < row.size(); ++column) {
        std::size_t& gap = gaps[column];
        if (missing[column]) {
            if (!last[column] || ++gap > longest) {
                return column;
            }
            continue;
        }
        for (std::size_t k = 1; k <= gap; ++k) {
            rows[rows.size() - 2 - gap + k][column] = between(*last[column], row[column], k, gap);
        }
        count += static_cast<std::int64_t>(gap);
        gap = 0;
        last[column] = row[column];
    }
    return std::nullopt;
}

std::optional<std::size_t> GapFiller::open() const {
    const auto gap = std::find_if(gaps.begin(), gaps.end(), [](std::size_t n) { return n > 0; });
    return gap == gaps.end() ? std::nullopt
                             : std::optional(static_cast<std::size_t>(gap - gaps.begin()));
}

bool GapFiller::ready() const {
    return !rows.empty() && rows.size() > *std::max_element(gaps.begin(), gaps.end());
}

void GapFiller::take(std::vector<double>& row) {
    row = rows.front();
    rows.pop_front();
}
