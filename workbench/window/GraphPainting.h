#pragma once

#include "workbench/figures/Figure.h"
#include "workbench/window/PixelScale.h"

#include <qcustomplot.h>

#include <cstddef>
#include <utility>
#include <vector>

// How a graph looks on its axes as they are: once for a painting, or a question where it runs.
class GraphPainting {
public:
    // The graph has samples, and outlives the painting.
    GraphPainting(const Graph& shownGraph, const QCPAxis& xAxis, const QCPAxis& yAxis);

    void paint(QCPPainter& painter, const QPen& pen, const QBrush& bandBrush) const;

    // In pixels, to what is drawn of the values within ten pixels; else -1.
    [[nodiscard]] double distanceTo(const QPointF& position) const;

private:
    using Range = std::pair<std::size_t, std::size_t>;  // of samples: the first, and the one after
    // What a column of pixels shows, from its upper to its lower end.
    struct Stroke {
        double left, top, bottom;
        bool connected;  // the graph comes from the column before
    };

    [[nodiscard]] Range visible() const;
    [[nodiscard]] int columnsOf(double width) const;  // of that width, in the pane
    [[nodiscard]] QPointF point(std::size_t i) const;
    [[nodiscard]] double crossing(std::size_t sample, double column) const;
    [[nodiscard]] std::vector<Stroke> strokes(double width) const;
    [[nodiscard]] std::vector<Stroke> filledStrokes(double width) const;
    [[nodiscard]] std::vector<Stroke> crossedStrokes(double width) const;
    [[nodiscard]] std::vector<Stroke> bandStrokes(double width) const;
    [[nodiscard]] QList<QPolygonF> lines() const;
    [[nodiscard]] QList<QPointF> points() const;
    [[nodiscard]] QList<QPolygonF> bandAreas() const;
    void paintOutline(QCPPainter& painter, const QPen& pen) const;
    void paintStrokes(QCPPainter& painter, const QPen& pen) const;
    void paintBand(QCPPainter& painter, const QBrush& brush) const;
    void paintLines(QCPPainter& painter, const QPen& pen) const;
    void paintPoints(QCPPainter& painter, const QPen& pen) const;
    void paintMark(QCPPainter& painter, const QPen& pen) const;

    const Graph& graph;
    PixelScale x, y;
    QRectF pane;
    Range seen;
    // More samples than columns; so many that columns are painted, not lines; a point has room.
    bool crowded = false, dense = false, roomy = false;
};
