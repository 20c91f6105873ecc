#pragma once

#include <string>
#include <vector>

// A figure that has been measured several times.
struct Figure {
    double value;   // the median
    double spread;  // half of the distance between the quartiles
};

// Quartiles between two samples are interpolated. There is at least one sample.
Figure figureOf(std::vector<double> samples);

// Of quotients of samples that were taken in the same turn. Where one of the two was measured less
// often, its last sample stands in for those that are missing.
Figure ratioOf(const std::vector<double>& dividends, const std::vector<double>& divisors);

// Three digits, and the spread in units of the last one: 1.02(3) is 1.02 with a spread of 0.03. Of
// a spread with more than two digits the last ones are left out, and so are those of the value.
std::string textOf(const Figure& figure);
