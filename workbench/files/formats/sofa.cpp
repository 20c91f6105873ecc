#include "workbench/files/Format.h"
#include "workbench/files/parts/formatPart.h"
#include "workbench/files/parts/hdf5Program.h"

// What is in an HDF5 file tells it apart, not its first bytes: the part finds out.
static bool isSofa(std::string_view /*head*/) {
    return false;
}

extern const Format sofaFormat = {"SOFA",
                                  {".sofa"},
                                  Format::Kind::measurement,
                                  {},
                                  isSofa,
                                  openByProgram<hdf5Program>,
                                  nullptr,
                                  Encoding::float64,
                                  partsByProgram<hdf5Program>,
                                  &hdf5Program};
