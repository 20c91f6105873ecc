#include "workbench/files/Format.h"
#include "workbench/files/parts/formatPart.h"

static constexpr PartProgram program = {"fendra-netcdf", "libnetcdf", "libnetcdf19",
                                        "libnetcdf-dev"};

// Classic, of 64-bit offsets, and of 64-bit data. NetCDF-4 is HDF5.
static bool recognises(std::string_view head) {
    using namespace std::string_view_literals;
    return head.starts_with("CDF\1"sv) || head.starts_with("CDF\2"sv) ||
           head.starts_with("CDF\5"sv);
}

extern const Format netcdfFormat = {"NetCDF", {".nc", ".cdf"},   Format::Kind::measurement,
                                    {},       recognises,        openByProgram<program>,
                                    nullptr,  Encoding::float64, partsByProgram<program>,
                                    &program};
