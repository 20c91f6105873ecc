#include "workbench/files/Format.h"
#include "workbench/files/parts/formatPart.h"

static constexpr PartProgram netcdfProgram = {"fendra-netcdf", "libnetcdf", "libnetcdf19",
                                              "libnetcdf-dev"};

// Classic, of 64-bit offsets, and of 64-bit data. NetCDF-4 is HDF5.
static bool isNetcdf(std::string_view head) {
    using namespace std::string_view_literals;
    return head.starts_with("CDF\1"sv) || head.starts_with("CDF\2"sv) ||
           head.starts_with("CDF\5"sv);
}

extern const Format netcdfFormat = {"NetCDF",
                                    {".nc", ".cdf"},
                                    Format::Kind::measurement,
                                    {},
                                    isNetcdf,
                                    openByProgram<netcdfProgram>,
                                    nullptr,
                                    Encoding::float64,
                                    partsByProgram<netcdfProgram>,
                                    &netcdfProgram};
