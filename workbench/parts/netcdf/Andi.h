#pragma once

#include "workbench/parts/netcdf/NetcdfFile.h"
#include "workbench/signals/SignalReader.h"

#include <string>

// Chromatograms as the Analytical Data Interchange protocol has them (ASTM E1947-98 and E1948-98):
// the variable ordinate_values is the signal of the detector, actual_sampling_interval the time
// between its points and actual_delay_time that of the first, in the unit of retention times,
// which are seconds unless the file says otherwise. Other variables are tables of peaks.

bool isChromatogram(const NetcdfFile& file);
inline constexpr const char* chromatogramName = "ordinate_values";

// Sets rate, axis and unit of the signal. Failure if it is not evenly sampled.
void describeChromatogram(SignalInfo& info, const NetcdfFile& file);
