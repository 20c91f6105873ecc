#pragma once

#include <optional>
#include <string>
#include <vector>

enum class PictureFormat { png, svg, pdf };

// The one that the ending of a file's name stands for, in either case; none: it is not that of a
// picture.
std::optional<PictureFormat> pictureFormatOf(const std::string& file);

// How a figure is to be painted.
struct PictureOrder {
    PictureFormat format = PictureFormat::png;
    int width = 1200, height = 900;  // in pixels, or in 1/96 inch
    std::optional<double> from, to;  // of the linked panes, in units of their axis
};

// Where a pane was painted: its axes' rectangle in pixels of the picture, and what they range over.
struct PaneFrame {
    double left = 0.0, top = 0.0, width = 0.0, height = 0.0;
    double lowX = 0.0, highX = 0.0, lowY = 0.0, highY = 0.0;
};

// A picture, as bytes of a file.
struct PaintedFigure {
    std::string bytes;
    std::vector<PaneFrame> frames;  // one a pane
};
