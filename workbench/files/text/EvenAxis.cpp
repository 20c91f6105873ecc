#include "workbench/files/text/EvenAxis.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

struct Round {
    double value = 0.0;
    int digits = 0;  // significant ones
};

}  // namespace

// The number of fewest digits from lowest to highest; the nearest to middle of equal ones.
static Round roundest(double lowest, double highest, double middle) {
    constexpr int most = 17;
    if (!std::isfinite(highest)) {
        return {middle, most};
    }
    const int leading = static_cast<int>(std::ceil(std::log10(highest)));
    for (int digits = 0; digits < most; ++digits) {
        const int place = leading - digits;
        const double round =
            place < 0 ? std::nearbyint(middle * std::pow(10.0, -place)) / std::pow(10.0, -place)
                      : std::nearbyint(middle / std::pow(10.0, place)) * std::pow(10.0, place);
        if (round > 0.0 && round >= lowest && round <= highest) {
            return {round, digits};
        }
    }
    return {middle, most};
}

// The step of points that are even just as they stand, as it would be written: a rounder one that
// their digits allow has to be shorter by two digits, or it is a chance.
static double writtenStep(const EvenSteps& steps) {
    const double step = std::abs(steps.step());
    const double rounding =
        8.0 * std::numeric_limits<double>::epsilon() * (std::abs(steps.first()) + step);
    const Round own = roundest(step - rounding, step + rounding, step);
    const auto [lowest, highest] = steps.range();
    const Round rounder = roundest(lowest, highest, step);
    return std::copysign(rounder.digits + 2 <= own.digits ? rounder.value : own.value,
                         steps.step());
}

// In seconds: step, lowestStep and highestStep of the axis.
static double rateOf(const SignalAxis& seconds, bool exact) {
    const double step = std::abs(seconds.step), rate = 1.0 / step;
    const Round roundStep = roundest(seconds.lowestStep, seconds.highestStep, step);
    const Round roundRate = roundest(1.0 / seconds.highestStep, 1.0 / seconds.lowestStep, rate);
    if (exact ? roundRate.digits + 3 <= roundStep.digits : step <= 1.0) {
        return roundRate.value;
    }
    if (!exact) {
        return 1.0 / roundStep.value;
    }
    const double whole = std::nearbyint(rate);
    return std::abs(rate - whole) <= 1e-9 * rate ? whole : rate;
}

EvenAxis evenAxis(const std::string& columnName, const ColumnName& name, const EvenSteps& steps) {
    const auto [lowest, highest] = steps.range();
    SignalAxis axis{columnName, steps.first(), steps.step(), false, lowest, highest};
    if (steps.exact()) {
        axis.step = writtenStep(steps);
    }
    return evenAxis(axis, name.unit, steps.exact());
}

EvenAxis evenAxis(const SignalAxis& axis, const std::optional<TimeUnit>& unit, bool exact) {
    if (!unit) {
        return {axis, 0.0};
    }
    SignalAxis seconds = axis;
    for (double* const value :
         {&seconds.start, &seconds.step, &seconds.lowestStep, &seconds.highestStep}) {
        *value = *value * unit->seconds / unit->parts;
    }
    const double rate = rateOf(seconds, exact);
    if (!std::isfinite(rate) || !std::isfinite(1.0 / rate) || !std::isfinite(seconds.start)) {
        return {axis, 0.0};
    }
    seconds.time = true;
    seconds.step = std::copysign(1.0 / rate, axis.step);
    seconds.lowestStep = std::min(seconds.lowestStep, 1.0 / rate);
    seconds.highestStep = std::max(seconds.highestStep, 1.0 / rate);
    return {seconds, rate};
}
