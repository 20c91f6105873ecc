#include "workbench/window/WorkPlot.h"

#include "workbench/figures/places.h"
#include "workbench/window/figureWords.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

WorkPlot::WorkPlot(Heard whoHears) : heard(std::move(whoHears)) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setAccessibleName(tr("Plot"));
    setMinimumSize(320, 240);
    layer("overlay")->setMode(QCPLayer::lmBuffered);
    takeColours();
}

// Those of the window: dark where its ground is.
void WorkPlot::takeColours() {
    const bool dark = palette().color(QPalette::Base).lightness() < 128;
    setColours(dark ? PlotColours::dark() : PlotColours::light());
    replot(rpQueuedReplot);
}

void WorkPlot::changeEvent(QEvent* event) {
    FigurePlot::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        takeColours();
    }
}

void WorkPlot::show(const Figure& newFigure) {
    clearItems();
    setFigure(std::make_shared<const Figure>(inPersonsLanguage(newFigure)));
    addCursors();
    // Room for any number, so that what is under the pointer stays there when the numbers change.
    constexpr int digits = 9;
    const int room = fontMetrics().averageCharWidth() * digits + 2 * fontMetrics().height();
    for (std::size_t i = 0; i < paneCount(); ++i) {
        QMargins margins = pane(i).minimumMargins();
        margins.setLeft(room);
        pane(i).setMinimumMargins(margins);
    }
    if (paneCount() > 1) {  // what it is all about; a title stands above each pane
        plotLayout()->setRowStretchFactor(1, 2.0);
    }
    if (heightsFollow) {
        for (std::size_t i = 0; i < paneCount(); ++i) {
            fitHeight(i);
        }
    }
    spaceNumbers();
    if (cursor && cursor->pane >= paneCount()) {
        cursor.reset();
    }
    if (mark && mark->pane >= paneCount()) {
        mark.reset();
    }
    markBefore.reset();
    showCursor();
    replot(rpQueuedReplot);
}

// As many numbers on an axis as have room beside it: a pane is about as high as its share.
void WorkPlot::spaceNumbers() {
    constexpr int most = 6, least = 2;
    const int share = height() / static_cast<int>(paneCount() + 1);
    for (std::size_t i = 0; i < paneCount(); ++i) {
        const int tall = (i == 0 ? 2 * share : share) - 4 * fontMetrics().height();
        y(i).ticker()->setTickCount(std::clamp(tall / (2 * fontMetrics().height()), least, most));
    }
}

void WorkPlot::resizeEvent(QResizeEvent* event) {
    FigurePlot::resizeEvent(event);
    spaceNumbers();
}

// On a layer of their own, so that a cursor that moves does not paint the graphs again.
void WorkPlot::addCursors() {
    cursorLines.clear();
    markLines.clear();
    const QColor colour = palette().color(QPalette::Highlight);
    for (std::size_t i = 0; i < paneCount(); ++i) {
        for (auto* const lines : {&cursorLines, &markLines}) {
            auto* const line = new QCPItemStraightLine(this);
            line->setLayer("overlay");
            line->setClipAxisRect(&pane(i));
            for (QCPItemPosition* const position : {line->point1, line->point2}) {
                position->setAxisRect(&pane(i));
                position->setAxes(&x(i), &y(i));
                position->setTypeX(QCPItemPosition::ptPlotCoords);
                position->setTypeY(QCPItemPosition::ptAxisRectRatio);
            }
            line->setPen(QPen(colour, 1.0, lines == &cursorLines ? Qt::SolidLine : Qt::DashLine));
            line->setVisible(false);
            lines->push_back(line);
        }
    }
    box = new QCPItemRect(this);
    box->setLayer("overlay");
    box->topLeft->setType(QCPItemPosition::ptAbsolute);
    box->bottomRight->setType(QCPItemPosition::ptAbsolute);
    box->setPen(QPen(colour));
    QColor fill = colour;
    fill.setAlpha(50);
    box->setBrush(fill);
    box->setVisible(false);
}

QCPAxis& WorkPlot::x(std::size_t index) const {
    return *pane(index).axis(QCPAxis::atBottom);
}

QCPAxis& WorkPlot::y(std::size_t index) const {
    return *pane(index).axis(QCPAxis::atLeft);
}

std::optional<std::size_t> WorkPlot::paneAt(const QPointF& point) const {
    for (std::size_t i = 0; i < paneCount(); ++i) {
        if (pane(i).rect().contains(point.toPoint())) {
            return i;
        }
    }
    return std::nullopt;
}

std::optional<QCPRange> WorkPlot::stretch() const {
    for (std::size_t i = 0; i < paneCount(); ++i) {
        if (shown().panes[i].linked) {
            return x(i).range();
        }
    }
    return std::nullopt;
}

// Heights fit what is shown, until a person has chosen other ones.
void WorkPlot::follow(std::size_t index) {
    for (std::size_t i = 0; heightsFollow && i < paneCount(); ++i) {
        if (i == index || (shown().panes[i].linked && shown().panes[index].linked)) {
            fitHeight(i);
        }
    }
    replot(rpQueuedReplot);
}

void WorkPlot::zoomAt(std::size_t index, double factor, double at) {
    x(index).scaleRange(factor, at);
    follow(index);
}

void WorkPlot::panBy(std::size_t index, double share) {
    x(index).moveRange(share * x(index).range().size());
    follow(index);
}

void WorkPlot::zoom(double factor) {
    if (paneCount() > 0) {
        const std::size_t index = cursor ? cursor->pane : 0;
        zoomAt(index, factor, cursor ? cursor->x : x(index).range().center());
    }
}

void WorkPlot::pan(double share) {
    if (paneCount() > 0) {
        panBy(cursor ? cursor->pane : 0, share);
    }
}

void WorkPlot::showWhole() {
    heightsFollow = true;
    showAll();
    replot(rpQueuedReplot);
}

void WorkPlot::wheelEvent(QWheelEvent* event) {
    const std::optional<std::size_t> at = paneAt(event->position());
    if (!at) {
        return;
    }
    constexpr double perStep = 0.85, anglePerStep = 120.0;
    const double steps = event->angleDelta().y() / anglePerStep;
    const double factor = std::pow(perStep, steps);
    if ((event->modifiers() & Qt::ControlModifier) != 0) {
        heightsFollow = false;
        y(*at).scaleRange(factor, y(*at).pixelToCoord(event->position().y()));
        replot(rpQueuedReplot);
    } else {
        zoomAt(*at, factor, x(*at).pixelToCoord(event->position().x()));
    }
    event->accept();
}

void WorkPlot::mousePressEvent(QMouseEvent* event) {
    const std::optional<std::size_t> at = paneAt(event->position());
    if (!at) {
        return;
    }
    const bool boxes =
        event->button() == Qt::RightButton || (event->modifiers() & Qt::ControlModifier) != 0;
    drag = boxes ? Drag::box : (selecting && shown().panes[*at].linked ? Drag::stretch : Drag::pan);
    pressed = event->position();
    moved = false;
    pressedPane = *at;
    pressedX = x(*at).range();
    pressedY = y(*at).range();
}

void WorkPlot::mouseMoveEvent(QMouseEvent* event) {
    const QPointF to = event->position();
    if (drag != Drag::none) {
        moved = moved || (to - pressed).manhattanLength() > 3;
        if (moved) {
            dragTo(to);
        }
        return;
    }
    if (const std::optional<std::size_t> at = paneAt(to)) {
        moveCursor(*at, x(*at).pixelToCoord(to.x()));
    }
}

// A range moved by as many pixels as the pointer, also on a logarithmic axis.
static QCPRange movedRange(const QCPAxis& axis, const QCPRange& from, double share) {
    if (axis.scaleType() == QCPAxis::stLogarithmic) {
        const double factor = std::pow(from.upper / from.lower, share);
        return {from.lower * factor, from.upper * factor};
    }
    return {from.lower + share * from.size(), from.upper + share * from.size()};
}

void WorkPlot::dragTo(const QPointF& to) {
    if (drag != Drag::pan) {
        showBox(to);
        return;
    }
    const QRect frame = pane(pressedPane).rect();
    x(pressedPane)
        .setRange(movedRange(x(pressedPane), pressedX, (pressed.x() - to.x()) / frame.width()));
    if (!heightsFollow) {
        y(pressedPane)
            .setRange(
                movedRange(y(pressedPane), pressedY, (to.y() - pressed.y()) / frame.height()));
    }
    follow(pressedPane);
}

void WorkPlot::showBox(const QPointF& to) {
    const QRectF frame = pane(pressedPane).rect();
    QRectF area = QRectF(pressed, to).normalized().intersected(frame);
    if (drag == Drag::stretch) {
        area.setTop(frame.top());
        area.setBottom(frame.bottom());
    }
    box->topLeft->setPixelPosition(area.topLeft());
    box->bottomRight->setPixelPosition(area.bottomRight());
    box->setVisible(true);
    layer("overlay")->replot();
}

void WorkPlot::mouseReleaseEvent(QMouseEvent* event) {
    const Drag ended = std::exchange(drag, Drag::none);
    if (ended == Drag::none) {
        return;
    }
    box->setVisible(false);
    if (!moved) {
        moveCursor(pressedPane, x(pressedPane).pixelToCoord(pressed.x()));
        click();
        return;
    }
    if (ended == Drag::pan) {
        return;
    }
    const QPointF to = event->position();
    const std::array<double, 2> across = {x(pressedPane).pixelToCoord(pressed.x()),
                                          x(pressedPane).pixelToCoord(to.x())};
    const QCPRange range(std::min(across[0], across[1]), std::max(across[0], across[1]));
    if (ended == Drag::stretch) {
        layer("overlay")->replot();
        heard.stretchSelected(range.lower, range.upper);
        return;
    }
    heightsFollow = false;
    x(pressedPane).setRange(range);
    y(pressedPane)
        .setRange(QCPRange(y(pressedPane).pixelToCoord(std::max(pressed.y(), to.y())),
                           y(pressedPane).pixelToCoord(std::min(pressed.y(), to.y()))));
    replot(rpQueuedReplot);
}

// The click that it began with has set a mark, or taken it away, which was not meant.
void WorkPlot::mouseDoubleClickEvent(QMouseEvent* /*event*/) {
    drag = Drag::none;
    mark = markBefore;
    showCursor();
    showWhole();
}

void WorkPlot::click() {
    if (!cursor) {
        return;
    }
    if (shown().panes[cursor->pane].kind == PaneKind::choice) {
        const std::vector<Reading> readings = readingsAt(cursor->pane, cursor->x);
        if (!readings.empty()) {
            heard.curveClicked(readings.front().sample);
        }
        return;
    }
    toggleMark();
}

void WorkPlot::toggleMark() {
    markBefore = mark;
    if (mark && cursor && mark->pane == cursor->pane && mark->x == cursor->x) {
        mark.reset();
    } else {
        mark = cursor;
    }
    showCursor();
}

void WorkPlot::zoomToMark() {
    if (mark && cursor && mark->pane == cursor->pane && mark->x != cursor->x) {
        x(cursor->pane)
            .setRange(QCPRange(std::min(mark->x, cursor->x), std::max(mark->x, cursor->x)));
        follow(cursor->pane);
    }
}

// To the sample that is nearest, where there is one.
void WorkPlot::moveCursor(std::size_t index, double at) {
    const std::vector<Reading> readings = readingsAt(index, at);
    cursor = Place{index, readings.empty() ? at : readings.front().x};
    showCursor();
}

// By columns of pixels, or by one sample where these are wider.
void WorkPlot::moveByKey(double columns) {
    if (!cursor) {
        if (paneCount() > 0) {
            moveCursor(0, x(0).range().center());
        }
        return;
    }
    const QCPAxis& axis = x(cursor->pane);
    const Place before = *cursor;
    const double pixel = axis.coordToPixel(before.x) + columns;
    moveCursor(before.pane, axis.pixelToCoord(pixel));
    const std::vector<Reading> here = readingsAt(before.pane, before.x);
    if (cursor->x == before.x && !here.empty()) {
        const std::size_t size = here.front().graph->values->size();
        const std::size_t sample = here.front().sample;
        const bool up = columns > 0;
        if (up ? sample + 1 < size : sample > 0) {
            const std::size_t next = up ? sample + 1 : sample - 1;
            moveCursor(before.pane, placeOf(*here.front().graph, next));
        }
    }
}

static void place(QCPItemStraightLine& line, double at) {
    line.point1->setCoords(at, 0.0);
    line.point2->setCoords(at, 1.0);
}

void WorkPlot::showCursor() {
    for (std::size_t i = 0; i < cursorLines.size(); ++i) {
        const auto shows = [&](const std::optional<Place>& there) {
            return there && (there->pane == i ||
                             (shown().panes[i].linked && shown().panes[there->pane].linked));
        };
        cursorLines[i]->setVisible(shows(cursor));
        markLines[i]->setVisible(shows(mark));
        if (cursor) {
            place(*cursorLines[i], cursor->x);
        }
        if (mark) {
            place(*markLines[i], mark->x);
        }
    }
    layer("overlay")->replot();
    const QString text = readout();
    setAccessibleDescription(text);
    QAccessibleEvent described(this, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&described);
    heard.cursorMoved(text);
}

static QString number(double value) {
    return QString::number(value, 'g', 8);
}

QString WorkPlot::readout() const {
    if (!cursor) {
        return {};
    }
    const Pane& pane = shown().panes[cursor->pane];
    QStringList parts = {
        QString("%1 %2").arg(QString::fromStdString(pane.x.label), number(cursor->x))};
    const std::vector<Reading> here = readingsAt(cursor->pane, cursor->x);
    for (const Reading& reading : here) {
        parts.push_back(
            QString("%1 %2").arg(QString::fromStdString(reading.graph->name), number(reading.y)));
    }
    if (mark && mark->pane == cursor->pane) {
        const std::vector<Reading> there = readingsAt(mark->pane, mark->x);
        QString text = tr("from the mark %1").arg(number(cursor->x - mark->x));
        if (!here.empty() && !there.empty() && here.front().graph == there.front().graph) {
            text += ", " + number(here.front().y - there.front().y);
        }
        parts.push_back(text);
    }
    return parts.join("   ");
}

void WorkPlot::keyPressEvent(QKeyEvent* event) {
    constexpr double closer = 0.8, share = 0.1;
    const bool shift = (event->modifiers() & Qt::ShiftModifier) != 0;
    switch (event->key()) {
        case Qt::Key_Plus:
        case Qt::Key_Up:
            return zoom(closer);
        case Qt::Key_Minus:
        case Qt::Key_Down:
            return zoom(1.0 / closer);
        case Qt::Key_Home:
        case Qt::Key_0:
            return showWhole();
        case Qt::Key_Left:
            return shift ? moveByKey(-1.0) : pan(-share);
        case Qt::Key_Right:
            return shift ? moveByKey(1.0) : pan(share);
        case Qt::Key_M:
            return toggleMark();
        case Qt::Key_B:
            return zoomToMark();
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return click();
        case Qt::Key_PageUp:
        case Qt::Key_PageDown: {
            const std::size_t now = cursor ? cursor->pane : 0;
            const bool up = event->key() == Qt::Key_PageUp;
            if (paneCount() > 0 && (up ? now > 0 : now + 1 < paneCount())) {
                const std::size_t next = up ? now - 1 : now + 1;
                moveCursor(next, x(next).range().center());
            }
            return;
        }
        default:
            FigurePlot::keyPressEvent(event);
    }
}
