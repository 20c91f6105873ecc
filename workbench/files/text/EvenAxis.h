#pragma once

#include "workbench/files/text/ColumnName.h"
#include "workbench/files/text/EvenSteps.h"
#include "workbench/signals/SignalAxis.h"

#include <optional>
#include <string>

// An axis, and the rate that it gives.
struct EvenAxis {
    SignalAxis axis;
    double rate = 0.0;  // Hz; 0: not known
};

// The axis that a column is, from its name and from the steps of two points or more. A time of a
// known unit is in seconds and has a rate, if doubles hold them. Several rates may fit:
//   times that are rounded           the roundest rate, or that of the roundest step if it is
//   longer
//                                    than a second
//   times even just as they stand    the rate of that step; one of three digits less that fits as
//                                    well (360 Hz for 0.0027777778 s), or a whole number of Hz that
//                                    is as near as 1e-9
EvenAxis evenAxis(const std::string& columnName, const ColumnName& name, const EvenSteps& steps);

// The same for an axis whose step is known, in that unit; empty: it is not a time. exact: the step
// is written without rounding.
EvenAxis evenAxis(const SignalAxis& axis, const std::optional<TimeUnit>& unit, bool exact);
