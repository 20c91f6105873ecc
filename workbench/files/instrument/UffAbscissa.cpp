#include "workbench/files/instrument/UffAbscissa.h"

#include "workbench/files/instrument/fields.h"
#include "workbench/files/text/ColumnDigits.h"
#include "workbench/files/text/ColumnName.h"
#include "workbench/files/text/UnitText.h"

#include <array>
#include <cmath>
#include <iterator>

static constexpr std::int64_t timeType = 17;

std::string_view nameOfUffType(std::int64_t type) {
    static constexpr auto names = std::to_array<std::string_view>({"",
                                                                   "",
                                                                   "Stress",
                                                                   "Strain",
                                                                   "",
                                                                   "Temperature",
                                                                   "Heat flux",
                                                                   "",
                                                                   "Displacement",
                                                                   "Reaction force",
                                                                   "",
                                                                   "Velocity",
                                                                   "Acceleration",
                                                                   "Excitation force",
                                                                   "",
                                                                   "Pressure",
                                                                   "Mass",
                                                                   "Time",
                                                                   "Frequency",
                                                                   "Rotational speed",
                                                                   "Order"});
    return type >= 0 && type < std::ssize(names) ? names[static_cast<std::size_t>(type)] : "";
}

// Half a unit of the last digit to either side of the step.
static void setSteps(SignalAxis& axis, std::string_view text) {
    ColumnDigits digits;
    digits.add(text);
    const double step = std::abs(axis.step), half = 0.5 * digits.unit(step);
    axis.lowestStep = step > half ? step - half : step;
    axis.highestStep = step + half;
}

std::optional<EvenAxis> UffAbscissa::axis() const {
    const std::optional<double> first = realNumber(start), by = realNumber(step);
    if (!first || !by || !std::isfinite(*first) || !std::isfinite(*by) || *by == 0.0) {
        return std::nullopt;
    }
    const std::string_view named = label.empty() ? nameOfUffType(type) : label;
    if (named.empty() && unit.empty() && *first == 0.0 && *by == 1.0) {
        return std::nullopt;
    }
    SignalAxis axis{
        withUnit(named.empty() ? "axis" : std::string(named), unit), *first, *by, false, 0.0, 0.0};
    setSteps(axis, step);
    const ColumnName name(type == timeType ? withUnit("Time", unit) : axis.name);
    return evenAxis(axis, name.kind == ColumnName::Kind::time ? name.unit : std::nullopt, false);
}
