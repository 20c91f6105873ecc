#include "workbench/jobs/Gain.h"

#include <cmath>
#include <cstdlib>

// exp(x) = sum x^n / n!, for |x| up to ln(10) / 2: beyond n = 30 a term changes nothing.
static double exponentialNearZero(double x) {
    double term = 1.0, sum = 1.0;
    for (int n = 1; n <= 30; ++n) {
        term *= x / n;
        sum += term;
    }
    return sum;
}

double factorOf(double decibels) {
    constexpr double lnTen = 2.302585092994046;
    const int decades = static_cast<int>(std::nearbyint(decibels / 20.0));
    double power = 1.0;  // exact, as 10^22 is
    for (int i = 0; i < std::abs(decades); ++i) {
        power *= 10.0;
    }
    const double rest = exponentialNearZero((decibels - 20.0 * decades) / 20.0 * lnTen);
    return decades < 0 ? rest / power : rest * power;
}

double decibelsOf(double factor) {
    return 20.0 * std::log10(factor);
}
