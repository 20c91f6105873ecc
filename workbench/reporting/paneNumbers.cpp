#include "workbench/reporting/paneNumbers.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <utility>

using Json = nlohmann::ordered_json;

static constexpr std::size_t mostColumns = 2000;

static Json rounded(double value) {
    if (std::isinf(value)) {
        return value > 0.0 ? "inf" : "-inf";
    }
    return std::strtod(fmt::format("{:.6g}", value).c_str(), nullptr);  // NaN becomes null
}

namespace {

// The columns of a graph.
struct Columns {
    std::size_t samples, width;  // of the graph, and in a column

    explicit Columns(std::size_t size)
        : samples(size), width(std::max<std::size_t>(1, (size + mostColumns - 1) / mostColumns)) {}

    // An array with what is to be known of each.
    template <typename Value>
    [[nodiscard]] Json each(Value value) const {
        Json all = Json::array();
        for (std::size_t first = 0; first < samples; first += width) {
            all.push_back(value(first, std::min(first + width, samples)));
        }
        return all;
    }
    [[nodiscard]] Json lowest(const Pyramid& values) const {
        return each(
            [&](auto first, auto last) { return rounded(values.extremes(first, last).lowest); });
    }
    [[nodiscard]] Json highest(const Pyramid& values) const {
        return each(
            [&](auto first, auto last) { return rounded(values.extremes(first, last).highest); });
    }
};

}  // namespace

// A column stands in the middle of its samples.
static void addPlaces(const Graph& graph, const Columns& columns, Json& object) {
    if (!graph.places.empty()) {
        object["places"] = columns.each([&](std::size_t first, std::size_t last) {
            return rounded(graph.places[(first + last - 1) / 2]);
        });
        return;
    }
    object["start"] = graph.start + 0.5 * static_cast<double>(columns.width - 1) * graph.step;
    object["step"] = static_cast<double>(columns.width) * graph.step;
}

static Json numbersOf(const Graph& graph) {
    const Columns columns(graph.values->size());
    Json object = {{"name", graph.name}};
    addPlaces(graph, columns, object);
    object["low"] = columns.lowest(*graph.values);
    if (columns.width > 1) {
        object["high"] = columns.highest(*graph.values);
    }
    if (graph.lower && graph.upper) {
        object["lower"] = columns.lowest(*graph.lower);
        object["upper"] = columns.highest(*graph.upper);
    }
    return object;
}

Json paneNumbers(const Figure& figure, const PaintedFigure& painted) {
    Json panes = Json::array();
    for (std::size_t i = 0; i < std::min(figure.panes.size(), painted.frames.size()); ++i) {
        const Pane& pane = figure.panes[i];
        const PaneFrame& frame = painted.frames[i];
        Json object = {{"frame", {frame.left, frame.top, frame.width, frame.height}},
                       {"x", {frame.lowX, frame.highX}},
                       {"log", pane.x.logarithmic},
                       {"label", pane.x.label},
                       {"linked", pane.linked},
                       {"graphs", Json::array()}};
        for (const Graph& graph : pane.graphs) {
            object["graphs"].push_back(numbersOf(graph));
        }
        panes.push_back(std::move(object));
    }
    return panes;
}
