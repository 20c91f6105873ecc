#include "workbench/window/TitledFrame.h"

#include <QPainter>

void TitledFrame::paintEvent(QPaintEvent* /*event*/) {
    const QString label = title().trimmed();
    const QFontMetrics metrics = fontMetrics();
    const int gap = metrics.averageCharWidth() / 2;
    const QRect text(3 * gap, 0, metrics.horizontalAdvance(label), metrics.height());
    const QRect box = rect().adjusted(0, text.height() / 2, 0, 0);

    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRegion(QRegion(rect()) - text.adjusted(-gap, 0, gap, 0));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRoundedRect(QRectF(box).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
    painter.setClipping(false);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(text, Qt::AlignLeft | Qt::AlignVCenter, label);
}
