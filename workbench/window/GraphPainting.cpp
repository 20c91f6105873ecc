#include "workbench/window/GraphPainting.h"

#include "workbench/figures/places.h"

#include <QLineF>

#include <algorithm>
#include <cmath>
#include <limits>

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr QPointF gap(notANumber, notANumber);

GraphPainting::GraphPainting(const Graph& shownGraph, const QCPAxis& xAxis, const QCPAxis& yAxis)
    : graph(shownGraph), x(xAxis), y(yAxis), pane(xAxis.axisRect()->rect()), seen(visible()) {
    const double spacing = pane.width() / static_cast<double>(seen.second - seen.first);
    crowded = spacing < 1.0;
    dense = spacing < 8.0;
    roomy = spacing > 4.0;
}

GraphPainting::Range GraphPainting::visible() const {
    const std::size_t first = samplesBefore(graph, x.coordinate(pane.left()));
    return {first, std::max(first, samplesBefore(graph, x.coordinate(pane.right())))};
}

int GraphPainting::columnsOf(double width) const {
    return static_cast<int>(std::ceil(pane.width() / width));
}

// Both NaN where there is a gap.
QPointF GraphPainting::point(std::size_t i) const {
    const QPointF point(x.pixel(placeOf(graph, i)), y.pixel((*graph.values)[i]));
    return std::isnan(point.x() + point.y()) ? gap : point;
}

// NaN where no sample has a place. What is too low for a logarithmic scale ends on its edge if
// others of the column have a place.
static std::pair<double, double> heightsOf(const PixelScale& y, double lowest, double highest) {
    const double top = y.pixel(highest), bottom = y.pixel(lowest);
    return {top, std::isnan(bottom) && !std::isnan(top) ? y.lowEdge() : bottom};
}

// Where the line to the sample from the one before it crosses that column of pixels; NaN: there is
// none.
double GraphPainting::crossing(std::size_t sample, double column) const {
    if (sample == 0 || sample >= graph.values->size()) {
        return notANumber;
    }
    const QPointF from = point(sample - 1), to = point(sample);
    const double along = std::clamp((column - from.x()) / (to.x() - from.x()), 0.0, 1.0);
    return from.y() + (to.y() - from.y()) * along;
}

std::vector<GraphPainting::Stroke> GraphPainting::strokes(double width) const {
    return crowded && graph.places.empty() && !x.isLogarithmic() ? filledStrokes(width)
                                                                 : crossedStrokes(width);
}

// Every column has samples. It begins at the sample before them, and so with what leads to it.
std::vector<GraphPainting::Stroke> GraphPainting::filledStrokes(double width) const {
    const Pyramid& values = *graph.values;
    std::vector<Stroke> columns;
    columns.reserve(static_cast<std::size_t>(columnsOf(width)));
    std::size_t first = seen.first;
    for (int column = 0; column < columnsOf(width); ++column) {
        const double left = pane.left() + column * width;
        const std::size_t next = std::max(first, samplesBefore(graph, x.coordinate(left + width)));
        const Pyramid::Extremes own = values.extremes(first, next);
        if (!std::isnan(own.highest)) {
            const double before =
                first > 0 && !std::isnan(values[first]) ? values[first - 1] : notANumber;
            const auto [top, bottom] =
                heightsOf(y, std::fmin(own.lowest, before), std::fmax(own.highest, before));
            if (!std::isnan(top)) {
                columns.push_back({left, top, bottom, !std::isnan(before)});
            }
        }
        first = next;
    }
    return columns;
}

std::vector<GraphPainting::Stroke> GraphPainting::crossedStrokes(double width) const {
    std::vector<Stroke> columns;
    columns.reserve(static_cast<std::size_t>(columnsOf(width)));
    std::size_t first = seen.first;
    double entry = crossing(first, pane.left());
    for (int column = 0; column < columnsOf(width); ++column) {
        const double left = pane.left() + column * width;
        const std::size_t next = std::max(first, samplesBefore(graph, x.coordinate(left + width)));
        const double exit = crossing(next, left + width);
        const Pyramid::Extremes own = graph.values->extremes(first, next);
        const auto [top, bottom] = heightsOf(y, own.lowest, own.highest);
        const Stroke stroke = {left, std::fmin(top, std::fmin(entry, exit)),
                               std::fmax(bottom, std::fmax(entry, exit)), !std::isnan(entry)};
        if (!std::isnan(stroke.top) && (first < next || !std::isnan(entry))) {
            columns.push_back(stroke);
        }
        first = next;
        entry = exit;
    }
    return columns;
}

std::vector<GraphPainting::Stroke> GraphPainting::bandStrokes(double width) const {
    std::vector<Stroke> columns;
    std::size_t first = seen.first;
    for (int column = 0; column < columnsOf(width); ++column) {
        const double left = pane.left() + column * width;
        const std::size_t next = samplesBefore(graph, x.coordinate(left + width));
        const auto [top, bottom] = heightsOf(y, graph.lower->extremes(first, next).lowest,
                                             graph.upper->extremes(first, next).highest);
        if (first < next && !std::isnan(top)) {
            columns.push_back({left, top, bottom, false});
        }
        first = std::max(first, next);
    }
    return columns;
}

// The part of a line that is within the rectangle (Y.-D. Liang and B. A. Barsky, "A new concept and
// method for line clipping", ACM Trans. Graph. 3 (1984) 1-22). false: none.
static bool clip(QLineF& line, const QRectF& within) {
    double from = 0.0, to = 1.0;
    const auto cut = [&from, &to](double direction, double room) {
        if (direction == 0.0) {
            return room >= 0.0;
        }
        (direction < 0.0 ? from : to) =
            direction < 0.0 ? std::max(from, room / direction) : std::min(to, room / direction);
        return from <= to;
    };
    if (!cut(-line.dx(), line.x1() - within.left()) ||
        !cut(line.dx(), within.right() - line.x1()) || !cut(-line.dy(), line.y1() - within.top()) ||
        !cut(line.dy(), within.bottom() - line.y1())) {
        return false;
    }
    const QPointF first = line.p1(), last = line.p2();
    line = {from > 0.0 ? first + from * (last - first) : first,
            to < 1.0 ? first + to * (last - first) : last};
    return true;
}

QList<QPolygonF> GraphPainting::lines() const {
    QList<QPolygonF> runs;
    const std::size_t end = std::min(seen.second + 1, graph.values->size());
    const std::size_t begin = seen.first > 0 ? seen.first - 1 : 0;
    QPointF before = gap;
    for (std::size_t i = begin; i < end; ++i) {
        const QPointF next = point(i);
        QLineF line(std::exchange(before, next), next);
        if (std::isnan(line.y1()) || std::isnan(line.y2()) || !clip(line, pane)) {
            continue;
        }
        if (runs.isEmpty() || runs.last().last() != line.p1()) {
            runs.append(QPolygonF({line.p1()}));
        }
        runs.last().append(line.p2());
    }
    return runs;
}

// All samples where there is room for points; else those that no line reaches.
QList<QPointF> GraphPainting::points() const {
    const auto hasPlace = [this](std::size_t i) {
        return i < graph.values->size() && !std::isnan(point(i).y());
    };
    QList<QPointF> found;
    for (std::size_t i = seen.first; i < seen.second; ++i) {
        if (hasPlace(i) && (roomy || (!hasPlace(i + 1) && (i == 0 || !hasPlace(i - 1))))) {
            found.append(point(i));
        }
    }
    return found;
}

// Upper bounds from left to right, lower ones back, without what is outside the pane.
QList<QPolygonF> GraphPainting::bandAreas() const {
    struct Side {
        const Pyramid& bounds;
        QPolygonF outline;
    } sides[] = {{*graph.upper, {}}, {*graph.lower, {}}};
    QList<QPolygonF> areas;
    const auto close = [&] {
        std::reverse(sides[1].outline.begin(), sides[1].outline.end());
        areas.append(sides[0].outline + sides[1].outline);
        sides[0].outline.clear();
        sides[1].outline.clear();
    };
    const std::size_t end = std::min(seen.second + 1, graph.values->size());
    for (std::size_t i = seen.first > 0 ? seen.first - 1 : 0; i + 1 < end; ++i) {
        const double left = x.pixel(placeOf(graph, i)), right = x.pixel(placeOf(graph, i + 1));
        const double from = std::max(left, pane.left()), to = std::min(right, pane.right());
        for (Side& side : sides) {
            const double first = y.pixel(side.bounds[i]), last = y.pixel(side.bounds[i + 1]);
            for (const double place : {from, to}) {
                const double height = first + (last - first) * ((place - left) / (right - left));
                side.outline.append({place, std::clamp(height, pane.top(), pane.bottom())});
            }
        }
        if (std::isnan(sides[0].outline.last().y()) || std::isnan(sides[1].outline.last().y())) {
            for (Side& side : sides) {
                side.outline.resize(side.outline.size() - 2);
            }
            close();
        }
    }
    close();
    return areas;
}

static bool isVector(const QCPPainter& painter) {
    return painter.modes().testFlag(QCPPainter::pmVectorized);
}

static QPen solid(QPen pen) {
    pen.setStyle(Qt::SolidLine);
    return pen;
}

// As a line through the ends of all columns, none of it outside the pane: not every device clips.
void GraphPainting::paintOutline(QCPPainter& painter, const QPen& pen) const {
    painter.setAntialiasing(true);
    painter.setPen(solid(pen));
    QPolygonF run;
    for (const Stroke& stroke : strokes(1.0)) {
        const bool seenAtAll = stroke.top <= pane.bottom() && stroke.bottom >= pane.top();
        if ((!stroke.connected || !seenAtAll) && !run.isEmpty()) {
            painter.drawPolyline(std::exchange(run, {}));
        }
        if (!seenAtAll) {
            continue;
        }
        const QPointF top(stroke.left + 0.5, std::clamp(stroke.top, pane.top(), pane.bottom()));
        const QPointF bottom(top.x(), std::clamp(stroke.bottom, pane.top(), pane.bottom()));
        const bool down = run.isEmpty() || std::abs(run.last().y() - top.y()) <
                                               std::abs(run.last().y() - bottom.y());
        run << (down ? top : bottom);
        if (top.y() != bottom.y()) {
            run << (down ? bottom : top);
        }
    }
    painter.drawPolyline(run);
}

// A column in whole pixels of the device. The ends of a short one are as pale as they cover their
// pixels, which is smooth and costs little; of a long one that would not be seen.
static void fillColumn(QCPPainter& painter, const QRectF& column, const QColor& colour) {
    constexpr double isLong = 6.0;
    const int left = static_cast<int>(std::lround(column.left()));
    const int width = static_cast<int>(column.width());
    if (column.height() > isLong) {
        const int top = static_cast<int>(std::lround(column.top()));
        const int bottom = static_cast<int>(std::lround(column.bottom()));
        painter.fillRect(QRect(left, top, width, bottom - top), colour);
        return;
    }
    const int bottom = static_cast<int>(std::ceil(column.bottom()));
    for (int row = static_cast<int>(std::floor(column.top())); row < bottom; ++row) {
        const double covered =
            std::min(column.bottom(), row + 1.0) - std::max(column.top(), row + 0.0);
        QColor pale = colour;
        pale.setAlphaF(colour.alphaF() * static_cast<float>(covered));
        painter.fillRect(QRect(left, row, width, 1), pale);
    }
}

void GraphPainting::paintStrokes(QCPPainter& painter, const QPen& pen) const {
    const double ratio = painter.device()->devicePixelRatioF();
    const double half = std::max(pen.widthF() * ratio, 1.0) / 2.0;
    const double wide = std::max(1.0, std::round(pen.widthF() * ratio));
    const double highest = (pane.top() - 2.0) * ratio, lowest = (pane.bottom() + 2.0) * ratio;
    painter.save();
    painter.setAntialiasing(false);
    painter.scale(1.0 / ratio, 1.0 / ratio);
    for (const Stroke& stroke : strokes(1.0 / ratio)) {
        const double top = std::max(stroke.top * ratio - half, highest);
        const double bottom = std::min(stroke.bottom * ratio + half, lowest);
        if (top < bottom) {
            fillColumn(painter, {stroke.left * ratio, top, wide, bottom - top}, pen.color());
        }
    }
    painter.restore();
}

void GraphPainting::paintBand(QCPPainter& painter, const QBrush& brush) const {
    const double width = 1.0 / painter.device()->devicePixelRatioF();
    painter.setAntialiasing(!crowded || isVector(painter));
    painter.setPen(Qt::NoPen);
    painter.setBrush(brush);
    if (!crowded) {
        for (const QPolygonF& area : bandAreas()) {
            painter.drawPolygon(area);
        }
    } else {
        for (const Stroke& stroke : bandStrokes(width)) {
            const double top = std::max(stroke.top, pane.top() - 2.0);
            const double bottom =
                std::min(std::max(stroke.bottom, stroke.top + 1.0), pane.bottom() + 2.0);
            if (top < bottom) {
                painter.fillRect(QRectF(stroke.left, top, width, bottom - top), brush);
            }
        }
    }
    painter.setBrush(Qt::NoBrush);
}

// Lines of their own cost less than one that crosses itself; dashes go on from one to the next.
void GraphPainting::paintLines(QCPPainter& painter, const QPen& pen) const {
    painter.setAntialiasing(true);
    painter.setPen(pen);
    for (const QPolygonF& run : lines()) {
        if (pen.style() != Qt::SolidLine || isVector(painter)) {
            painter.drawPolyline(run);
            continue;
        }
        for (qsizetype i = 1; i < run.size(); ++i) {
            painter.drawLine(run[i - 1], run[i]);
        }
    }
}

void GraphPainting::paintPoints(QCPPainter& painter, const QPen& pen) const {
    painter.setAntialiasing(true);
    painter.setPen(Qt::NoPen);
    painter.setBrush(pen.color());
    const double radius = roomy ? 1.0 + pen.widthF() : pen.widthF();
    for (const QPointF& point : points()) {
        if (pane.contains(point)) {
            painter.drawEllipse(point, radius, radius);
        }
    }
    painter.setBrush(Qt::NoBrush);
}

void GraphPainting::paintMark(QCPPainter& painter, const QPen& pen) const {
    const QPointF place = point(*graph.marked);
    if (!std::isnan(place.y()) && pane.contains(place)) {
        painter.setAntialiasing(true);
        painter.setPen(QPen(pen.color(), 2.0));
        painter.drawEllipse(place, 6.0, 6.0);
    }
}

void GraphPainting::paint(QCPPainter& painter, const QPen& pen, const QBrush& bandBrush) const {
    if (graph.lower != nullptr && graph.upper != nullptr) {
        paintBand(painter, bandBrush);
    }
    if (!dense) {
        paintLines(painter, pen);
    } else if (isVector(painter)) {
        paintOutline(painter, pen);
    } else {
        paintStrokes(painter, pen);
    }
    if (!crowded) {
        paintPoints(painter, pen);
    }
    if (graph.marked && *graph.marked < graph.values->size()) {
        paintMark(painter, pen);
    }
}

static double distance(const QPointF& point, const QLineF& line) {
    const QPointF direction = line.p2() - line.p1();
    const double length = QPointF::dotProduct(direction, direction);
    const double along =
        length > 0.0 ? QPointF::dotProduct(point - line.p1(), direction) / length : 0.0;
    return QLineF(point, line.p1() + std::clamp(along, 0.0, 1.0) * direction).length();
}

double GraphPainting::distanceTo(const QPointF& position) const {
    constexpr double reach = 10.0;
    double least = std::numeric_limits<double>::infinity();
    const auto take = [&](const QLineF& line) {
        least = std::min(least, distance(position, line));
    };
    if (dense) {
        for (const Stroke& stroke : strokes(1.0)) {
            take({stroke.left, stroke.top, stroke.left, stroke.bottom});
        }
    } else {
        for (const QPolygonF& run : lines()) {
            for (qsizetype i = 1; i < run.size(); ++i) {
                take({run[i - 1], run[i]});
            }
        }
        for (const QPointF& point : points()) {
            take({point, point});
        }
    }
    return least <= reach ? least : -1.0;
}
