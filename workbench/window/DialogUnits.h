#pragma once

#include "platform/DialogResource.h"

#include <QFont>
#include <QRect>

// The font of a dialog template, and pixels for its dialog units: four units across are the mean
// width of the letters A-Z a-z, eight down the height of the font.
class DialogUnits {
public:
    explicit DialogUnits(const DialogResource& dialog);

    [[nodiscard]] const QFont& font() const { return dialogFont; }
    // Edges are rounded each for itself, so that what is aligned in units is aligned in pixels.
    [[nodiscard]] QRect toPixels(const QRect& units) const;

private:
    QFont dialogFont;
    double letterWidth;
    int letterHeight;
};
