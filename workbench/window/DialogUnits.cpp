#include "workbench/window/DialogUnits.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontMetrics>

#include <algorithm>

// The font named; where it is not there, the person's own, but not smaller than the template wants.
static QFont nearestFont(const DialogResource& dialog) {
    if (QFontDatabase::hasFamily(dialog.fontName)) {
        return {dialog.fontName, dialog.fontPoints};
    }
    QFont font = QApplication::font();
    font.setPointSize(std::max(font.pointSize(), dialog.fontPoints));
    return font;
}

// Not rounded: a long label in a font of fractional widths would outgrow its place.
static double meanLetterWidth(const QFont& font) {
    const QString letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    return QFontMetricsF(font).horizontalAdvance(letters) / static_cast<double>(letters.size());
}

DialogUnits::DialogUnits(const DialogResource& dialog)
    : dialogFont(nearestFont(dialog)),
      letterWidth(meanLetterWidth(dialogFont)),
      letterHeight(QFontMetrics(dialogFont).height()) {}

QRect DialogUnits::toPixels(const QRect& units) const {
    const auto across = [this](int x) { return qRound(x * letterWidth / 4); };
    const auto down = [this](int y) { return (y * letterHeight + 4) / 8; };
    return {QPoint(across(units.x()), down(units.y())),
            QPoint(across(units.x() + units.width()) - 1, down(units.y() + units.height()) - 1)};
}
