#pragma once

#include "workbench/window/FigurePlot.h"

#include <QCoreApplication>

#include <functional>
#include <optional>

class QCPItemStraightLine;
class QCPItemRect;

// A plot to work in. The wheel zooms at the pointer, dragging pans, dragging with the right button
// or Ctrl zooms into a box, a double click shows all. The cursor is at the sample nearest to the
// pointer; a click sets a mark, from which differences are counted. Keys do the same:
//     + -  Up Down     zoom at the cursor         Home  0      show all
//     Left Right       pan                        Shift+Left Shift+Right   move the cursor
//     M                set the mark, or take it away
//     B                zoom into the stretch between mark and cursor
//     Page Up, Down    the cursor goes to the pane above or below
//     Return           click where the cursor is
class WorkPlot : public FigurePlot {
    Q_DECLARE_TR_FUNCTIONS(WorkPlot)

public:
    struct Heard {
        std::function<void(const QString&)> cursorMoved;  // where it is, with values, in one line
        // A click on a sample of the curve by which a strength was chosen.
        std::function<void(std::size_t sample)> curveClicked;
        std::function<void(double from, double to)> stretchSelected;
    };

    explicit WorkPlot(Heard whoHears);

    // Shows a figure in the person's language; the view stays where the panes are the same.
    void show(const Figure& newFigure);

    // While it is on, dragging selects a stretch of the linked panes instead of panning.
    void selectStretch(bool on) { selecting = on; }

    void zoom(double factor);
    void pan(double share);
    void showWhole();

    // The stretch of the linked panes that is shown.
    [[nodiscard]] std::optional<QCPRange> stretch() const;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    enum class Drag { none, pan, box, stretch };
    struct Place {
        std::size_t pane;
        double x;
    };

    [[nodiscard]] QCPAxis& x(std::size_t index) const;
    [[nodiscard]] QCPAxis& y(std::size_t index) const;
    [[nodiscard]] std::optional<std::size_t> paneAt(const QPointF& point) const;
    void takeColours();
    void spaceNumbers();
    void addCursors();
    void showBox(const QPointF& to);
    void dragTo(const QPointF& to);
    void endDrag(const QPointF& to);
    void click();
    void zoomAt(std::size_t index, double factor, double at);
    void panBy(std::size_t index, double share);
    void follow(std::size_t index);
    void moveCursor(std::size_t index, double at);
    void moveByKey(double columns);
    void showCursor();
    void toggleMark();
    void zoomToMark();
    [[nodiscard]] QString readout() const;

    Heard heard;
    bool selecting = false, heightsFollow = true;
    Drag drag = Drag::none;
    QPointF pressed;
    bool moved = false;
    QCPRange pressedX, pressedY;
    std::size_t pressedPane = 0;
    std::optional<Place> cursor, mark, markBefore;             // the last click
    std::vector<QCPItemStraightLine*> cursorLines, markLines;  // one a pane; the plot's
    QCPItemRect* box = nullptr;
};
