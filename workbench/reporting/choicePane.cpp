#include "workbench/reporting/choicePane.h"

#include "workbench/figures/places.h"
#include "workbench/reporting/graphs.h"

#include <algorithm>
#include <cmath>
#include <utility>

// In the order of the parameter, each once.
static std::vector<CurvePoint> sorted(std::vector<CurvePoint> points) {
    std::stable_sort(points.begin(), points.end(), [](const CurvePoint& a, const CurvePoint& b) {
        return a.parameter < b.parameter;
    });
    const auto same = [](const CurvePoint& a, const CurvePoint& b) {
        return a.parameter == b.parameter;
    };
    points.erase(std::unique(points.begin(), points.end(), same), points.end());
    return points;
}

Pane choicePane(const ChoiceRecord& choice) {
    const std::vector<CurvePoint> points = sorted(choice.curve);
    Graph graph;
    std::vector<double> values;
    for (const CurvePoint& point : points) {
        graph.places.push_back(point.parameter);
        values.push_back(point.criterion);
    }
    const double chosen =
        choice.steps ? static_cast<double>(*choice.steps) : choice.strength.value_or(0.0);
    const bool allPositive =
        std::all_of(values.begin(), values.end(), [](double value) { return value > 0.0; });
    graph.name = choice.rule;
    graph.role = GraphRole::curve;
    graph.values = std::make_shared<const Pyramid>(std::move(values));
    if (!graph.places.empty()) {
        graph.marked = nearestSample(graph, chosen);
    }
    Pane pane = paneOf(PaneKind::choice,
                       choice.steps ? "Choice of the number of steps" : "Choice of the strength",
                       choice.steps ? "steps" : "strength", "criterion");
    pane.x.logarithmic = points.front().parameter > 0.0;
    pane.y.logarithmic = allPositive;
    pane.graphs.push_back(std::move(graph));
    return pane;
}
