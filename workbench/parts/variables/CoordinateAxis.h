#pragma once

#include "workbench/parts/variables/SampleRows.h"
#include "workbench/signals/SignalReader.h"

#include <cstdint>
#include <string>

// Sets axis and rate of a signal from the points at which its samples stand, a variable of their
// own. A time in a unit that is known, also one since a date, gives a rate. Points that are not
// evenly spaced give a remark.
//   name, unit  of the points; the unit may be empty
//   narrow      they are stored in 32 bits, whose fewest digits are taken for what is meant
void setAxis(SignalInfo& info, const std::string& name, const std::string& unit, SampleRows& points,
             bool narrow);
