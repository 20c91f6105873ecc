#include "workbench/window/PlotColours.h"

#include <array>
#include <cstddef>

namespace {

struct Look {
    QRgb onLight, onDark;
    Qt::PenStyle dashes = Qt::SolidLine;
    double width = 1.2;
};

}  // namespace

// In the order of the roles. What a measurement gave is paler than what was made of it.
constexpr std::array<Look, 7> roleLooks = {{{0x9aa3ad, 0x667180},
                                            {0x0b7a6f, 0x43c2b2},
                                            {0x12357f, 0x9cc4ff},
                                            {0xd98a1f, 0xf2b04e, Qt::DashLine, 1.6},
                                            {0x8c1f2f, 0xff9a9a},
                                            {0xb9a14a, 0xd8c878, Qt::DotLine, 1.6},
                                            {0x12357f, 0x9cc4ff, Qt::SolidLine, 1.6}}};

// Further graphs of a role: neighbours are far apart in lightness. Each role starts elsewhere.
constexpr std::array<Look, 7> variantLooks = {{{0xe08a3c, 0xb5651d},
                                               {0x2d5a27, 0xb6e3a8},
                                               {0xc77fb6, 0x9a4f8a},
                                               {0x5a2a0c, 0xf3d2b3},
                                               {0x4fa3c7, 0x3a7f9e, Qt::DashLine},
                                               {0x4b1d6b, 0xd7b8f0, Qt::DashLine},
                                               {0x8f9a2c, 0x6f7a22, Qt::DashLine}}};

static const Look& lookOf(GraphRole role, int variant) {
    const auto row = static_cast<std::size_t>(role);
    constexpr std::size_t apart = 3;
    return variant == 0 ? roleLooks.at(row)
                        : variantLooks.at((static_cast<std::size_t>(variant - 1) + apart * row) %
                                          variantLooks.size());
}

QPen PlotColours::pen(GraphRole role, int variant) const {
    const Look& look = lookOf(role, variant);
    QPen pen(QColor(onDark ? look.onDark : look.onLight), look.width, look.dashes);
    pen.setJoinStyle(Qt::RoundJoin);
    return pen;
}

QColor PlotColours::band(GraphRole role, int variant) const {
    QColor colour = pen(role, variant).color();
    colour.setAlpha(70);
    return colour;
}

PlotColours PlotColours::light() {
    PlotColours colours;
    colours.background = QColor(255, 255, 255);
    colours.text = QColor(0x20, 0x24, 0x2a);
    colours.grid = QColor(0xdf, 0xe3, 0xe8);
    return colours;
}

PlotColours PlotColours::dark() {
    PlotColours colours;
    colours.background = QColor(0x1b, 0x1e, 0x23);
    colours.text = QColor(0xe4, 0xe7, 0xeb);
    colours.grid = QColor(0x36, 0x3b, 0x43);
    colours.onDark = true;
    return colours;
}
