#pragma once

class QCPAxis;

// The scale of an axis, taken once for a painting: from coordinates to pixels and back.
class PixelScale {
public:
    explicit PixelScale(const QCPAxis& axis);

    // An infinity stands on the edge of the pane, whatever else is beyond the range stands beyond
    // it, at most 10^15 pixels away. NaN: a number that a logarithmic scale has no place for.
    [[nodiscard]] double pixel(double coordinate) const;
    [[nodiscard]] double coordinate(double pixel) const;

    [[nodiscard]] bool isLogarithmic() const { return logarithmic; }
    [[nodiscard]] double lowEdge() const { return low; }

private:
    bool logarithmic;
    double from, to;             // of the range, or their logarithms
    double low, high, highEdge;  // pixels of from and to, and the last one of the pane
};
