#pragma once

#include "workbench/figures/Figure.h"
#include "workbench/figures/Picture.h"

#include <nlohmann/json_fwd.hpp>

// What a script needs to tell the values under a pointer: an object for each pane,
//     frame    left, top, width and height of its axes in the picture
//     x        the lowest and the highest value there; log: whether the axis is logarithmic
//     label    of the x axis
//     linked   whether it shows the same stretch as the other linked panes
//     graphs   for each its name, and either start and step, or places, of its columns; low and
//              high, the extremes of each column, high only where a column has several samples;
//              lower and upper, the bounds, where it has them
// A column is one sample, or, of a graph of more than 2000, as many as make them fit. Numbers have
// six digits; null stands for NaN, and "inf" and "-inf" are words.
nlohmann::ordered_json paneNumbers(const Figure& figure, const PaintedFigure& painted);
