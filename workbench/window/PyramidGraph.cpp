#include "workbench/window/PyramidGraph.h"

#include "workbench/figures/places.h"
#include "workbench/window/GraphPainting.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

static double leastPositiveOf(const Pyramid& values) {
    if (values.finiteRange().lowest > 0.0) {
        return values.finiteRange().lowest;
    }
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < values.size(); ++i) {
        least = values[i] > 0.0 ? std::min(least, values[i]) : least;
    }
    return std::isfinite(least) ? least : 0.0;
}

PyramidGraph::PyramidGraph(QCPAxis* x, QCPAxis* y, std::shared_ptr<const Graph> shownGraph)
    : QCPAbstractPlottable(x, y),
      graph(std::move(shownGraph)),
      leastPositive(y->scaleType() == QCPAxis::stLogarithmic ? leastPositiveOf(*graph->values)
                                                             : 0.0) {
    setName(QString::fromStdString(graph->name));
}

double PyramidGraph::selectTest(const QPointF& position, bool onlySelectable,
                                QVariant* /*details*/) const {
    const bool counts = (!onlySelectable || mSelectable != QCP::stNone) && !mKeyAxis.isNull() &&
                        mKeyAxis->axisRect()->rect().contains(position.toPoint());
    return counts ? GraphPainting(*graph, *mKeyAxis, *mValueAxis).distanceTo(position) : -1.0;
}

QCPRange PyramidGraph::getKeyRange(bool& found, QCP::SignDomain domain) const {
    const std::size_t size = graph->values->size();
    found = size > 0 && (domain != QCP::sdPositive || placeOf(*graph, size - 1) > 0.0);
    if (!found) {
        return {};
    }
    const std::size_t first = domain == QCP::sdPositive ? samplesBefore(*graph, 5e-324) : 0;
    return {placeOf(*graph, first), placeOf(*graph, size - 1)};
}

// Of a stretch with an infinity in it, that of all values stands in.
static void include(QCPRange& range, bool& found, const Pyramid* values, std::size_t first,
                    std::size_t last) {
    if (values == nullptr) {
        return;
    }
    Pyramid::Extremes of = values->extremes(first, last);
    if (std::isinf(of.lowest) || std::isinf(of.highest)) {
        of = values->finiteRange();
    }
    if (!std::isnan(of.lowest)) {
        range = found
                    ? QCPRange(std::min(range.lower, of.lowest), std::max(range.upper, of.highest))
                    : QCPRange(of.lowest, of.highest);
        found = true;
    }
}

QCPRange PyramidGraph::getValueRange(bool& found, QCP::SignDomain domain,
                                     const QCPRange& keys) const {
    const bool all = keys == QCPRange();
    const std::size_t first = all ? 0 : samplesBefore(*graph, keys.lower);
    const std::size_t last = all ? graph->values->size() : samplesBefore(*graph, keys.upper);
    QCPRange range;
    found = false;
    for (const Pyramid* values : {graph->values.get(), graph->lower.get(), graph->upper.get()}) {
        include(range, found, values, first, last);
    }
    if (found && domain == QCP::sdPositive && range.lower <= 0.0) {
        range.lower = std::min(leastPositive, range.upper);
        found = leastPositive > 0.0;
    }
    return range;
}

void PyramidGraph::draw(QCPPainter* painter) {
    if (!mKeyAxis.isNull() && !mValueAxis.isNull() && graph->values->size() > 0) {
        GraphPainting(*graph, *mKeyAxis, *mValueAxis).paint(*painter, mPen, mBrush);
    }
}

void PyramidGraph::drawLegendIcon(QCPPainter* painter, const QRectF& rect) const {
    applyDefaultAntialiasingHint(painter);
    if (graph->lower != nullptr) {
        painter->fillRect(rect, mBrush);
    }
    QPen pen = mPen;
    pen.setWidthF(std::max(2.0, mPen.widthF()));
    painter->setPen(pen);
    painter->drawLine(QLineF(rect.left(), rect.center().y(), rect.right(), rect.center().y()));
}
