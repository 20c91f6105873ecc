#pragma once

#include "workbench/figures/Figure.h"
#include "workbench/window/PlotColours.h"

#include <qcustomplot.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

// A figure as a plot: its panes one below the other, each with title, axes and legend. All linked
// panes show the same stretch of x. On the screen it is a widget; a painter takes the same to a
// picture.
class FigurePlot : public QCustomPlot {
public:
    // A sample of a graph.
    struct Reading {
        const Graph* graph;
        std::size_t sample;
        double x, y;
    };

    explicit FigurePlot(QWidget* parent = nullptr);

    // Shows another figure, in the widget's font. Where its panes are of the same kinds as those
    // before, they go on to show the same stretches; else all of it is shown.
    void setFigure(std::shared_ptr<const Figure> shownFigure);
    [[nodiscard]] const Figure& shown() const { return *figure; }

    void setColours(const PlotColours& plotColours);

    // All of all graphs.
    void showAll();
    // That stretch of the linked panes, an end that is not given staying; heights follow.
    void showStretch(std::optional<double> from, std::optional<double> to);
    // Gives a pane the height of what it shows of its graphs.
    void fitHeight(std::size_t pane);

    [[nodiscard]] std::size_t paneCount() const { return rects.size(); }
    [[nodiscard]] QCPAxisRect& pane(std::size_t index) const { return *rects.at(index); }

    // Of each graph of a pane, in their order, the sample that is nearest to x. A graph that does
    // not reach as far as x has none.
    [[nodiscard]] std::vector<Reading> readingsAt(std::size_t pane, double x) const;

private:
    void addPane(std::size_t index);
    void addHead(const Pane& pane, QCPLegend& names);
    void addGraphs(const Pane& pane, QCPAxisRect& rect, QCPLegend& names);
    void setUpAxis(QCPAxis& axis, const FigureAxis& shownAxis) const;
    void link();
    void applyColours();
    void setStretch(std::size_t pane, QCPRange range);
    [[nodiscard]] QCPRange wholeStretch(std::size_t pane) const;
    [[nodiscard]] QCPAxis& xAxisOf(std::size_t pane) const;
    [[nodiscard]] QCPAxis& yAxisOf(std::size_t pane) const;

    std::shared_ptr<const Figure> figure = std::make_shared<const Figure>();
    PlotColours colours = PlotColours::light();
    QCPMarginGroup* commonMargins;    // of all panes; the plot's, as these are
    std::vector<QCPAxisRect*> rects;  // one a pane
    std::vector<QCPLegend*> legends;
};
