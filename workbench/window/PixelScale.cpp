#include "workbench/window/PixelScale.h"

#include <qcustomplot.h>

#include <algorithm>
#include <cmath>

// As QCPAxis has it: the last row of pixels is that of the lower end.
PixelScale::PixelScale(const QCPAxis& axis)
    : logarithmic(axis.scaleType() == QCPAxis::stLogarithmic),
      from(logarithmic ? std::log(axis.range().lower) : axis.range().lower),
      to(logarithmic ? std::log(axis.range().upper) : axis.range().upper) {
    const QRectF pane = axis.axisRect()->rect();
    const bool horizontal = axis.orientation() == Qt::Horizontal;
    low = horizontal ? pane.left() : pane.bottom() - 1.0;
    high = horizontal ? pane.right() : pane.top() - 1.0;
    highEdge = horizontal ? pane.right() - 1.0 : pane.top();
}

double PixelScale::pixel(double coordinate) const {
    if (logarithmic && !(coordinate > 0.0)) {
        return std::nan("");
    }
    if (std::isinf(coordinate)) {
        return coordinate > 0.0 ? highEdge : low;
    }
    constexpr double most = 1e15;
    const double place = logarithmic ? std::log(coordinate) : coordinate;
    return std::clamp(low + (place - from) / (to - from) * (high - low), -most, most);
}

double PixelScale::coordinate(double pixel) const {
    const double place = from + (pixel - low) / (high - low) * (to - from);
    return logarithmic ? std::exp(place) : place;
}
