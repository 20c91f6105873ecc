#pragma once

#include "workbench/figures/Figure.h"

#include <qcustomplot.h>

#include <cstddef>
#include <memory>

// A graph on the axes of a plot, drawn from its pyramid. Where samples are dense, each column of
// pixels is a stroke from the lowest to the highest of its samples and of the one before, so that
// none is hidden and neighbours are connected; where there are few, they are connected by lines,
// and each is a point where there is room. NaN is a gap, and what a logarithmic axis has no place
// for. An infinity stands on the edge of the pane, and sets no range.
class PyramidGraph : public QCPAbstractPlottable {
public:
    PyramidGraph(QCPAxis* x, QCPAxis* y, std::shared_ptr<const Graph> shownGraph);

    [[nodiscard]] const Graph& shown() const { return *graph; }

    // In pixels, to what is drawn of the values within ten pixels; else -1.
    double selectTest(const QPointF& position, bool onlySelectable,
                      QVariant* details = nullptr) const override;

    // Of the values and their bounds that are finite.
    QCPRange getKeyRange(bool& found, QCP::SignDomain domain = QCP::sdBoth) const override;
    QCPRange getValueRange(bool& found, QCP::SignDomain domain = QCP::sdBoth,
                           const QCPRange& keys = QCPRange()) const override;

protected:
    void draw(QCPPainter* painter) override;
    void drawLegendIcon(QCPPainter* painter, const QRectF& rect) const override;

private:
    std::shared_ptr<const Graph> graph;
    double leastPositive;  // of the values; 0: none
};
