#include "workbench/figures/places.h"

#include <algorithm>
#include <cmath>

double placeOf(const Graph& graph, std::size_t i) {
    return graph.places.empty() ? graph.start + static_cast<double>(i) * graph.step
                                : graph.places[i];
}

// The quotient may be wrong by its rounding, and so by one sample.
static std::size_t evenSamplesBefore(const Graph& graph, double x) {
    const auto size = static_cast<double>(graph.values->size());
    const double count = std::ceil((x - graph.start) / graph.step);
    auto before = static_cast<std::size_t>(std::clamp(std::isnan(count) ? 0.0 : count, 0.0, size));
    if (before > 0 && placeOf(graph, before - 1) >= x) {
        --before;
    } else if (before < graph.values->size() && placeOf(graph, before) < x) {
        ++before;
    }
    return before;
}

std::size_t samplesBefore(const Graph& graph, double x) {
    if (graph.places.empty()) {
        return evenSamplesBefore(graph, x);
    }
    const auto found = std::lower_bound(graph.places.begin(), graph.places.end(), x);
    return static_cast<std::size_t>(found - graph.places.begin());
}

std::size_t nearestSample(const Graph& graph, double x) {
    const std::size_t next = samplesBefore(graph, x);
    if (next == 0) {
        return 0;
    }
    const bool closer =
        next < graph.values->size() && placeOf(graph, next) - x < x - placeOf(graph, next - 1);
    return closer ? next : next - 1;
}
