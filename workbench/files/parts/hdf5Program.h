#pragma once

#include "workbench/files/parts/PartProgram.h"

// For all formats that are HDF5 underneath.
inline constexpr PartProgram hdf5Program = {"fendra-hdf5", "libhdf5", "libhdf5-103-1",
                                            "libhdf5-dev"};
