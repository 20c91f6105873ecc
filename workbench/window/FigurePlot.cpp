#include "workbench/window/FigurePlot.h"

#include "workbench/figures/places.h"
#include "workbench/window/PyramidGraph.h"

#include <algorithm>
#include <cmath>
#include <utility>

FigurePlot::FigurePlot(QWidget* parent)
    : QCustomPlot(parent), commonMargins(new QCPMarginGroup(this)) {
    QLocale numbers = QLocale::c();
    numbers.setNumberOptions(QLocale::OmitGroupSeparator);
    setLocale(numbers);
    setAutoAddPlottableToLegend(false);
    setPlottingHint(QCP::phCacheLabels, true);
    plotLayout()->clear();
    plotLayout()->setRowSpacing(2);
}

static bool sameKinds(const Figure& a, const Figure& b) {
    return std::equal(a.panes.begin(), a.panes.end(), b.panes.begin(), b.panes.end(),
                      [](const Pane& x, const Pane& y) {
                          return x.kind == y.kind && x.x.logarithmic == y.x.logarithmic &&
                                 x.y.logarithmic == y.y.logarithmic;
                      });
}

void FigurePlot::setFigure(std::shared_ptr<const Figure> shownFigure) {
    std::vector<std::pair<QCPRange, QCPRange>> ranges;
    if (sameKinds(*figure, *shownFigure)) {
        for (std::size_t i = 0; i < rects.size(); ++i) {
            ranges.emplace_back(xAxisOf(i).range(), yAxisOf(i).range());
        }
    }
    clearPlottables();
    plotLayout()->clear();
    rects.clear();
    legends.clear();
    figure = std::move(shownFigure);
    for (std::size_t i = 0; i < figure->panes.size(); ++i) {
        addPane(i);
    }
    applyColours();
    for (std::size_t i = 0; i < ranges.size(); ++i) {
        xAxisOf(i).setRange(ranges[i].first);
        yAxisOf(i).setRange(ranges[i].second);
    }
    if (ranges.empty()) {
        showAll();
    }
    link();
}

// Of linked panes that stand together, the last alone names the axis that they share.
static bool namesItsAxis(const Figure& figure, std::size_t index) {
    const Pane& pane = figure.panes[index];
    const Pane* const next = index + 1 < figure.panes.size() ? &figure.panes[index + 1] : nullptr;
    return next == nullptr || !pane.linked || !next->linked || next->x.label != pane.x.label;
}

void FigurePlot::addPane(std::size_t index) {
    const Pane& pane = figure->panes[index];
    auto* const names = new QCPLegend;
    addHead(pane, *names);
    auto* const rect = new QCPAxisRect(this);
    plotLayout()->addElement(plotLayout()->rowCount(), 0, rect);
    rect->setMarginGroup(QCP::msLeft | QCP::msRight, commonMargins);
    rect->setMinimumMargins(QMargins(10, 2, 14, 6));
    setUpAxis(*rect->axis(QCPAxis::atBottom), pane.x);
    setUpAxis(*rect->axis(QCPAxis::atLeft), pane.y);
    if (!namesItsAxis(*figure, index)) {
        rect->axis(QCPAxis::atBottom)->setLabel({});
    }
    rect->setupFullAxesBox();
    for (QCPAxis* const other : {rect->axis(QCPAxis::atTop), rect->axis(QCPAxis::atRight)}) {
        other->setTicks(false);
        other->setTickLabels(false);
    }
    rects.push_back(rect);
    legends.push_back(names);
    addGraphs(pane, *rect, *names);
}

// Title and legend stand above the pane, where they hide nothing of it.
void FigurePlot::addHead(const Pane& pane, QCPLegend& names) {
    auto* const head = new QCPLayoutGrid;
    plotLayout()->addElement(plotLayout()->rowCount(), 0, head);
    plotLayout()->setRowStretchFactor(plotLayout()->rowCount() - 1, 0.001);
    auto* const title = new QCPTextElement(this, QString::fromStdString(pane.title));
    QFont bold = font();
    bold.setBold(true);
    title->setFont(bold);
    title->setTextFlags(Qt::AlignLeft | Qt::AlignVCenter);
    head->addElement(0, 0, title);
    head->addElement(0, 1, &names);
    head->setColumnStretchFactor(1, 0.001);
    head->setMargins(QMargins(10, 4, 14, 0));
    names.setLayer("legend");
    names.setFont(font());
    names.setBorderPen(Qt::NoPen);
    names.setBrush(Qt::NoBrush);
    names.setIconSize(24, 10);
    names.setMargins(QMargins(0, 0, 0, 0));
    names.setFillOrder(QCPLayoutGrid::foColumnsFirst);
    constexpr int graphsOfRow = 4;
    names.setWrap(graphsOfRow);
}

void FigurePlot::addGraphs(const Pane& pane, QCPAxisRect& rect, QCPLegend& names) {
    constexpr int longestName = 200;
    const QFontMetrics metrics(font());
    for (const Graph& graph : pane.graphs) {
        auto* const shownGraph =
            new PyramidGraph(rect.axis(QCPAxis::atBottom), rect.axis(QCPAxis::atLeft),
                             std::shared_ptr<const Graph>(figure, &graph));
        shownGraph->setName(metrics.elidedText(shownGraph->name(), Qt::ElideMiddle, longestName));
        names.addItem(new QCPPlottableLegendItem(&names, shownGraph));
    }
}

void FigurePlot::setUpAxis(QCPAxis& axis, const FigureAxis& shownAxis) const {
    axis.setLabel(QString::fromStdString(shownAxis.label));
    axis.setLabelFont(font());
    axis.setTickLabelFont(font());
    axis.setNumberFormat("gb");
    axis.setLabelPadding(4);
    if (shownAxis.logarithmic) {
        axis.setScaleType(QCPAxis::stLogarithmic);
        axis.setTicker(QSharedPointer<QCPAxisTickerLog>::create());
        axis.setNumberFormat("eb");
        axis.setNumberPrecision(0);
    }
}

void FigurePlot::link() {
    std::vector<QCPAxis*> axes;
    for (std::size_t i = 0; i < rects.size(); ++i) {
        if (figure->panes[i].linked) {
            axes.push_back(&xAxisOf(i));
        }
    }
    for (QCPAxis* const from : axes) {
        for (QCPAxis* const to : axes) {
            if (from != to) {
                connect(from, qOverload<const QCPRange&>(&QCPAxis::rangeChanged), to,
                        qOverload<const QCPRange&>(&QCPAxis::setRange));
            }
        }
    }
}

void FigurePlot::setColours(const PlotColours& plotColours) {
    colours = plotColours;
    applyColours();
}

static void colour(QCPAxis& axis, const PlotColours& colours) {
    axis.setBasePen(colours.text);
    axis.setTickPen(colours.text);
    axis.setSubTickPen(colours.text);
    axis.setLabelColor(colours.text);
    axis.setTickLabelColor(colours.text);
    axis.grid()->setPen(QPen(colours.grid, 1.0));
    axis.grid()->setZeroLinePen(QPen(colours.grid.darker(115), 1.0));
}

void FigurePlot::applyColours() {
    setBackground(QBrush(colours.background));
    for (QCPAxisRect* const rect : rects) {
        for (QCPAxis* const axis : rect->axes()) {
            colour(*axis, colours);
        }
        for (QCPAbstractPlottable* const plottable : rect->plottables()) {
            const Graph& graph = dynamic_cast<PyramidGraph&>(*plottable).shown();
            plottable->setPen(colours.pen(graph.role, graph.variant));
            plottable->setBrush(colours.band(graph.role, graph.variant));
        }
    }
    for (QCPLegend* const names : legends) {
        names->setTextColor(colours.text);
        for (QCPLayoutElement* const item : names->elements(false)) {  // null: an empty cell
            if (item != nullptr) {
                dynamic_cast<QCPAbstractLegendItem&>(*item).setTextColor(colours.text);
            }
        }
    }
    for (QCPTextElement* const title : plotLayout()->findChildren<QCPTextElement*>()) {
        title->setTextColor(colours.text);
    }
}

QCPAxis& FigurePlot::xAxisOf(std::size_t pane) const {
    return *rects[pane]->axis(QCPAxis::atBottom);
}

QCPAxis& FigurePlot::yAxisOf(std::size_t pane) const {
    return *rects[pane]->axis(QCPAxis::atLeft);
}

// A range with some room at its ends, which QCPAxis takes. What is far below the top of a
// logarithmic axis is left out.
static QCPRange withRoom(QCPRange range, bool logarithmic, double room) {
    constexpr double most = 1e200, least = 1e-200, decades = 1e-10;
    if (logarithmic) {
        range.upper = std::clamp(range.upper, least, most);
        range.lower = std::clamp(range.lower, range.upper * decades, range.upper);
        const double factor = std::max(std::pow(range.upper / range.lower, room), 1.05);
        return {range.lower / factor, range.upper * factor};
    }
    range = {std::clamp(range.lower, -most, most), std::clamp(range.upper, -most, most)};
    const double size = range.upper - range.lower;
    const double around = std::max(std::abs(range.lower), std::abs(range.upper));
    const double added = size > around * 1e-12 ? size * room : around > least ? around * 0.1 : 1.0;
    return {range.lower - added, range.upper + added};
}

// The range that a plottable has, joined to those before; it has none where it was not found.
static void join(std::optional<QCPRange>& all, bool found, const QCPRange& range) {
    if (found) {
        all = all ? QCPRange(std::min(all->lower, range.lower), std::max(all->upper, range.upper))
                  : range;
    }
}

static QCP::SignDomain shownDomain(const FigureAxis& axis) {
    return axis.logarithmic ? QCP::sdPositive : QCP::sdBoth;
}

QCPRange FigurePlot::wholeStretch(std::size_t pane) const {
    std::optional<QCPRange> whole;
    const FigureAxis& axis = figure->panes[pane].x;
    for (std::size_t i = 0; i < rects.size(); ++i) {
        if (i != pane && !(figure->panes[i].linked && figure->panes[pane].linked)) {
            continue;
        }
        for (const QCPAbstractPlottable* const plottable : rects[i]->plottables()) {
            bool found = false;
            const QCPRange range = plottable->getKeyRange(found, shownDomain(axis));
            join(whole, found, range);
        }
    }
    constexpr double room = 0.01;
    return whole ? withRoom(*whole, axis.logarithmic, room) : xAxisOf(pane).range();
}

void FigurePlot::setStretch(std::size_t pane, QCPRange range) {
    xAxisOf(pane).setRange(range);
    fitHeight(pane);
}

void FigurePlot::showAll() {
    for (std::size_t i = 0; i < rects.size(); ++i) {
        setStretch(i, wholeStretch(i));
    }
}

void FigurePlot::showStretch(std::optional<double> from, std::optional<double> to) {
    for (std::size_t i = 0; i < rects.size(); ++i) {
        if (figure->panes[i].linked) {
            const QCPRange now = xAxisOf(i).range();
            setStretch(i, {from.value_or(now.lower), to.value_or(now.upper)});
        }
    }
}

void FigurePlot::fitHeight(std::size_t pane) {
    std::optional<QCPRange> height;
    const FigureAxis& axis = figure->panes[pane].y;
    for (const QCPAbstractPlottable* const plottable : rects[pane]->plottables()) {
        bool found = false;
        const QCPRange range =
            plottable->getValueRange(found, shownDomain(axis), xAxisOf(pane).range());
        join(height, found, range);
    }
    constexpr double room = 0.05;
    if (height) {
        yAxisOf(pane).setRange(withRoom(*height, axis.logarithmic, room));
    }
}

std::vector<FigurePlot::Reading> FigurePlot::readingsAt(std::size_t pane, double x) const {
    std::vector<Reading> readings;
    for (const Graph& graph : figure->panes.at(pane).graphs) {
        const std::size_t size = graph.values->size();
        if (size > 0 && x >= placeOf(graph, 0) && x <= placeOf(graph, size - 1)) {
            const std::size_t sample = nearestSample(graph, x);
            readings.push_back({&graph, sample, placeOf(graph, sample), (*graph.values)[sample]});
        }
    }
    return readings;
}
