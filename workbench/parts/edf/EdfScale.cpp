#include "workbench/parts/edf/EdfScale.h"

#include <cmath>

// Whether the value is whole, except for its rounding. Of at most eight digits, a fraction that is
// there is far above that.
static bool isWhole(double value) {
    return std::abs(value - std::round(value)) <= 1e-15 * std::abs(value);
}

EdfScale::EdfScale(double physicalLow, double physicalHigh, int digitalLow, int digitalHigh)
    : p0(physicalLow), p1(physicalHigh), d0(digitalLow), d1(digitalHigh), divisor(d1 - d0) {
    constexpr int mostPlaces = 7;  // of a decimal of eight characters
    double power = 1.0;
    for (int places = 0; places <= mostPlaces; ++places, power *= 10.0) {
        if (isWhole(physicalLow * power) && isWhole(physicalHigh * power)) {
            p0 = std::round(physicalLow * power);
            p1 = std::round(physicalHigh * power);
            divisor *= power;
            return;
        }
    }
}
