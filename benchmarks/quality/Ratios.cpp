#include "benchmarks/quality/Ratios.h"

#include <algorithm>
#include <cmath>

double Ratios::quantile(double share) const {
    std::vector<double> sorted = values;
    std::sort(sorted.begin(), sorted.end());
    const double place = std::ceil(share * static_cast<double>(sorted.size())) - 1.0;
    return sorted.at(static_cast<std::size_t>(std::max(0.0, place)));
}
