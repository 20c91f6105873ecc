#pragma once

#include "workbench/figures/Picture.h"
#include "workbench/window/FigurePlot.h"

#include <QByteArray>
#include <QFont>
#include <QString>

#include <memory>

// Paints a figure, with its caption below, into a picture: in one font of one size, dark on light,
// with decimal points.
class FigurePainter {
public:
    // Failure where nothing of the figure is in the stretch of the order.
    FigurePainter(const Figure& figure, const PictureOrder& pictureOrder);

    // Failure if memory does not suffice.
    PaintedFigure paint();

private:
    void requireStretch() const;
    void paintOn(QPaintDevice& device, double scale, QCPPainter::PainterModes modes);
    [[nodiscard]] QByteArray png();
    [[nodiscard]] QByteArray svg();
    [[nodiscard]] QByteArray pdf();
    [[nodiscard]] std::vector<PaneFrame> frames() const;

    PictureOrder order;
    QFont font;
    QString caption;  // its lines, as many as there is room for
    int captionHeight;
    FigurePlot plot;
};
