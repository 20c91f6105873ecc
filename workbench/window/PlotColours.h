#pragma once

#include "workbench/figures/Figure.h"

#include <QColor>
#include <QPen>

// What plots are drawn in. Graphs differ in lightness first, then in dashes and width, so that they
// can be told apart without hues.
struct PlotColours {
    QColor background, text, grid;

    [[nodiscard]] QPen pen(GraphRole role, int variant) const;
    // Of the area between bounds, under the graph.
    [[nodiscard]] QColor band(GraphRole role, int variant) const;

    static PlotColours light();  // dark on light
    static PlotColours dark();   // light on dark

private:
    bool onDark = false;
};
