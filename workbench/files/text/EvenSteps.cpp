#include "workbench/files/text/EvenSteps.h"

#include <algorithm>
#include <cmath>
#include <limits>

static constexpr double epsilon = std::numeric_limits<double>::epsilon();

// Of reading both points, and of the sums that made them.
double EvenSteps::rounding(double point) const {
    return 4.0 * epsilon * std::max(std::abs(start), std::abs(point));
}

static bool narrow(EvenSteps::Range& range, double lowest, double highest, bool firstTime) {
    range.lowest = firstTime ? lowest : std::max(range.lowest, lowest);
    range.highest = firstTime ? highest : std::min(range.highest, highest);
    return range.lowest <= range.highest;
}

double EvenSteps::unitAt(double point) {
    const double magnitude = std::abs(point);
    if (magnitude < decade.lowest || magnitude > decade.highest) {
        const double first = std::pow(10.0, std::floor(std::log10(magnitude)));
        decade = {first * (1.0 + 1e-9), first * (10.0 - 1e-8)};
        unit = digits.unit(point);
    }
    return unit;
}

bool EvenSteps::acceptByDigits(double point, double rise) {
    const auto i = static_cast<double>(count);
    const double half = 0.5 * startUnit;
    const double slack = 0.5 * unitAt(point) + half / 16.0 + rounding(point);
    bool any = false;
    for (int place = 0; place < places; ++place) {
        const double offset = half * (place - 8) / 8.0;
        Range& fit = fits[static_cast<std::size_t>(place)];
        any = narrow(fit, (rise - offset - slack) / i, (rise - offset + slack) / i, count == 1) ||
              any;
    }
    return any;
}

bool EvenSteps::acceptLoosely(double rise) {
    const auto i = static_cast<double>(count);
    return narrow(loose, rise / (i + 0.05), rise / (i - 0.05), count == 1);
}

bool EvenSteps::accept(double point) {
    if (!std::isfinite(point)) {
        return false;
    }
    if (count == 0) {
        start = last = point;
        startUnit = digits.unit(start);
        count = 1;
        return true;
    }
    if (count == 1) {
        direction = point < start ? -1.0 : 1.0;
        firstRise = std::abs(point - start);
    }
    const double rise = direction * (point - start);
    if (!(direction * (point - last) > 0.0) || std::isinf(rise)) {
        return false;
    }
    const auto i = static_cast<double>(count);
    byDigits = byDigits && acceptByDigits(point, rise);
    loosely = loosely && acceptLoosely(rise);
    plain = plain && std::abs(rise - i * firstRise) <=
                         (i + 1.0) * rounding(start + direction * firstRise) + rounding(point);
    last = point;
    ++count;
    return byDigits || loosely;
}

bool EvenSteps::even() const {
    return loosely || (byDigits && (count >= 5 ||
                                    std::abs(last - start) >=
                                        2.0 * digits.unit(last) * static_cast<double>(count - 1)));
}

EvenSteps::Range EvenSteps::range() const {
    const auto intervals = static_cast<double>(count - 1);
    if (plain) {
        const double mean = std::abs(last - start) / intervals;
        const double half = digits.wholeNumbers() ? 0.0 : 0.5 * digits.unit(last);
        const double slack = digits.wholeNumbers() ? 0.0 : (half + rounding(last)) / intervals;
        return {std::max(0.0, mean - slack), mean + slack};
    }
    if (!byDigits) {
        return loose;
    }
    Range all{std::numeric_limits<double>::infinity(), 0.0};
    for (const Range& fit : fits) {
        if (fit.lowest <= fit.highest) {
            all.lowest = std::min(all.lowest, std::max(0.0, fit.lowest));
            all.highest = std::max(all.highest, fit.highest);
        }
    }
    return all;
}

double EvenSteps::step() const {
    const Range fitting = range();
    const double mean = std::abs(last - start) / static_cast<double>(count - 1);
    return direction * std::clamp(mean, fitting.lowest, fitting.highest);
}
