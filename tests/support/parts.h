#pragma once

#include "workbench/parts/Part.h"

extern const Part edfPart, hdf5Part, matPart, mseedPart, netcdfPart;
