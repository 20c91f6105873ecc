#include "workbench/files/Format.h"
#include "workbench/files/parts/formatPart.h"
#include "workbench/files/parts/hdf5Program.h"

// The signature stands at the beginning, or after a block of the user's own, which is 512 bytes
// long or twice, four times as long (HDF5 File Format Specification Version 3.0, section II.A).
static bool isHdf5(std::string_view head) {
    static constexpr std::string_view signature = "\x89HDF\r\n\x1a\n";
    for (std::size_t place = 0; place < head.size(); place = place == 0 ? 512 : 2 * place) {
        if (head.substr(place).starts_with(signature)) {
            return true;
        }
    }
    return false;
}

extern const Format hdf5Format = {"HDF5",
                                  {".h5", ".hdf5"},
                                  Format::Kind::measurement,
                                  {.rate = true, .axis = true, .names = true, .notes = true},
                                  isHdf5,
                                  openByProgram<hdf5Program>,
                                  createByProgram<hdf5Program>,
                                  Encoding::float64,
                                  partsByProgram<hdf5Program>,
                                  &hdf5Program};
