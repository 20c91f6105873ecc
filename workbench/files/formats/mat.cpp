#include "workbench/files/Format.h"
#include "workbench/files/parts/formatPart.h"

#include <algorithm>

static constexpr PartProgram matProgram = {"fendra-mat", "libmatio", "libmatio11", "libmatio-dev"};

// By the end of the header, which is version, 0x0100 or 0x0200, and order of bytes. In version 7.3,
// 0x0200, an HDF5 file follows it.
static bool isMat(std::string_view head) {
    using namespace std::string_view_literals;
    const std::string_view mark = head.substr(std::min(head.size(), std::size_t{124}), 4);
    return mark == "\0\1IM"sv || mark == "\1\0MI"sv || mark == "\0\2IM"sv || mark == "\2\0MI"sv;
}

extern const Format matFormat = {"MAT",
                                 {".mat"},
                                 Format::Kind::measurement,
                                 {.rate = true, .axis = true, .names = true, .notes = true},
                                 isMat,
                                 openByProgram<matProgram>,
                                 createByProgram<matProgram>,
                                 Encoding::float64,
                                 partsByProgram<matProgram>,
                                 &matProgram};
