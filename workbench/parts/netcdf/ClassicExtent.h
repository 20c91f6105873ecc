#pragma once

#include "workbench/signals/SourceName.h"

#include <string>

// Checks a NetCDF file of the classic formats (Unidata, "The NetCDF Classic Format Specification",
// versions 1, 2 and 5) before the library has it, which takes what is missing at its end for
// zeros. Failure if the header cannot be read, or the file is shorter than it declares.
void checkExtent(const std::string& path, const SourceName& source);
