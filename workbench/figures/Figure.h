#pragma once

#include "workbench/figures/Pyramid.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// What a graph stands for. It decides how the graph is drawn: graphs differ in lightness, dashes
// or width, not in hue alone.
enum class GraphRole { signal, kernel, result, known, residual, noise, curve };

// Values over evenly spaced places, or over places of their own.
struct Graph {
    std::string name;  // UTF-8 and printable, for the legend
    GraphRole role = GraphRole::signal;
    int variant = 0;  // of several graphs of one role in a pane: 0, 1, ...
    std::shared_ptr<const Pyramid> values;
    double start = 0.0, step = 1.0;  // sample i stands at start + i step; step above 0
    std::vector<double> places;      // instead, where they are not evenly spaced; rising
    std::shared_ptr<const Pyramid> lower, upper;  // bounds of the values; null: none
    std::optional<std::size_t> marked;            // a sample that is pointed out
};

struct FigureAxis {
    std::string label;  // with its unit: "time (s)"; UTF-8 and printable
    bool logarithmic = false;
};

// What the panes of a figure are, so that a window can tell them apart.
enum class PaneKind { samples, kernel, residual, spectra, choice };

struct Pane {
    PaneKind kind = PaneKind::samples;
    std::string title;
    FigureAxis x, y;
    bool linked = false;  // to the other linked panes: they always show the same stretch of x
    std::vector<Graph> graphs;
};

// Something to look at: panes one below the other, and what is said about them.
struct Figure {
    std::vector<Pane> panes;
    std::vector<std::string> caption;  // lines below the panes; UTF-8 and printable
};
